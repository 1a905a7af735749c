// SPDX-License-Identifier: Zlib
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

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

    // The earliest fluke outside the goal zones.
    const std::optional<Search::Goal>& earliestFluke() const { return firstFluke; }

    // Cells outside the goal zones with a goal that is no fluke, and those with flukes alone, the
    // earliest first.
    Places getOutside() const { return placesOf(outside); }
    Places getFlukes() const { return placesOf(flukes); }

private:
    using Cells = std::map<std::pair<int, int>, Search::Goal>; // by row and column

    bool isFluke(const Search& search, const Search::Goal& goal) const;
    static Places placesOf(const Cells& cells);

    const LevelMap& map;
    const Zones& zones;
    std::map<std::string, Search::Goal> goals; // by goal zone; without goal zones all under ""
    Cells outside;
    Cells flukes;
    std::optional<Search::Goal> firstFluke;
};

// Inputs that lead through these zones in their order to a goal zone, "" for any. Each zone is
// searched for from the exact end of the path to the one before, with at most this many states. If
// one or the goal is not reached, adds an error and returns nothing.
Inputs pathThrough(const LevelMap& map, const Zones& zones, const std::vector<const Zone*>& through,
                   const std::string& goal, std::uint32_t mostStates, Findings& findings);
