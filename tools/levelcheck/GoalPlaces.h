// SPDX-License-Identifier: Zlib
#pragma once

#include <map>
#include <string>
#include <utility>
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

    // The first goal in each cell outside the goal zones: cells with a goal that is no fluke, and
    // those with flukes alone. The earliest come first.
    std::vector<Search::Goal> getOutside() const { return sorted(outside); }
    std::vector<Search::Goal> getFlukes() const { return sorted(flukes); }

private:
    using Cells = std::map<std::pair<int, int>, Search::Goal>; // by row and column

    bool isFluke(const Search& search, const Search::Goal& goal) const;
    static std::vector<Search::Goal> sorted(const Cells& cells);

    const LevelMap& map;
    const Zones& zones;
    std::map<std::string, Search::Goal> goals; // by goal zone; without goal zones all under ""
    Cells outside;
    Cells flukes;
};

// Inputs that lead through these zones in their order to a goal zone, "" for any. Each zone is
// searched for from the exact end of the path to the one before. If one or the goal is not reached,
// adds an error and returns nothing.
Inputs pathThrough(const LevelMap& map, const Zones& zones, const std::vector<const Zone*>& through,
                   const std::string& goal, Findings& findings);
