// SPDX-License-Identifier: Zlib
#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "tools/levelcheck/Findings.h"
#include "tools/levelcheck/Search.h"

// Where a search reaches the goal, and the fastest path there for each goal zone. A goal is a fluke
// if it hangs on a single frame: with its last press one frame earlier or later it is missed.
class GoalPlaces {
public:
    GoalPlaces(const LevelMap& level, const Zones& itsZones) : map(level), zones(itsZones) {}

    // To be called for every goal of a search.
    void add(const Search& search, const Search::Goal& goal);

    // The fastest goal in the goal zone of that name, "" for any; null: none was found.
    const Search::Goal* fastest(const std::string& name) const;

    // The best goal in each cell outside the goal zones, the earliest first: those of the cells in
    // which all goals are flukes, or those of the others.
    std::vector<Search::Goal> getOutside(bool flukes) const;

private:
    using Place = std::tuple<const Zone*, int, int>; // a goal zone, or a row and a column outside

    struct Found : Search::Goal {
        bool fluke;
    };

    bool isFluke(const Search& search, const Search::Goal& goal) const;
    bool isInside(const Zone* zone) const { return zone || !zones.hasGoals(); }

    const LevelMap& map;
    const Zones& zones;
    std::map<Place, Found> best; // of each place: no fluke if there is one, then the fastest
};

// Inputs that lead through these zones in their order to a goal zone, "" for any. Each zone is
// searched for from the exact end of the path to the one before. If one or the goal is not reached,
// adds an error and returns nothing.
Inputs pathThrough(const LevelMap& map, const Zones& zones, const std::vector<const Zone*>& through,
                   const std::string& goal, Findings& findings);
