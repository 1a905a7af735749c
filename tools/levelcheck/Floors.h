// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <vector>

#include "tools/levelcheck/Places.h"
#include "tools/levelcheck/Search.h"

// The floors of a level that were stood on in a search, each as long as one can walk, and whether
// each leads on: to a goal, to the start or to another floor that does. Each has a search of its
// own, which begins standing there. All ways are exact, so nothing is seen that is none.
class Floors {
public:
    Floors(const LevelMap& level, const Search& whole);

    std::size_t size() const { return order.size(); }

    // Those from which there is no way, and those whose searches were too short to tell.
    const Places& getTraps() const { return traps; }
    const Places& getUnsure() const { return unsure; }

private:
    class WayOn;

    void findFloors();
    void findStands(const Search& whole);
    bool spread(std::uint32_t mostStates);
    std::uint32_t floorAt(const RunnerState& state) const;

    const LevelMap& map;
    std::vector<std::uint32_t> floors; // of each cell, from 1; 0: none
    std::uint32_t count = 0;
    std::vector<RunnerState> stands;  // the first state on each floor
    std::vector<std::uint32_t> order; // floors, as they were first stood on
    std::vector<bool> free;           // floors that lead on
    std::vector<bool> exhausted;      // floors whose last search went to its end
    Places traps;
    Places unsure;
};
