// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <vector>

#include "tools/levelcheck/Findings.h"
#include "tools/levelcheck/Search.h"

// Where the runner can get stuck, from a search that went to its end: floors and states from which
// neither the start nor a goal can be reached. Each candidate gets a search of its own, which
// begins exactly there. Paths use the real physics, so what leads on really does.
class DeadEnds {
public:
    DeadEnds(const LevelMap& level, const Search& wholeSearch);

    // Floors on which the runner stood, each as long as it can walk.
    std::size_t floorCount() const { return stands.size(); }

    // Floors from which no path on was found.
    const Places& getFloors() const { return deadFloors; }

    // Where the runner comes to rest with no path on; where it has none if it never rests.
    const Places& getTraps() const { return traps; }

    // For each of these places, the last state on the path there that still had a way back.
    const std::vector<RunnerState>& getEntrances() const { return entrances; }

private:
    void findStands();
    void checkFloors();
    std::vector<bool> findEscapes() const;
    void findTraps(const std::vector<bool>& escapes, bool resting);
    std::size_t floorAt(const RunnerState& state) const;
    bool leadsOn(std::uint32_t from, std::uint32_t mostStates) const;

    const LevelMap& map;
    const Search& whole;
    const StateSet& states;            // of the whole search
    std::vector<std::uint32_t> stands; // the first state on each floor where one stood
    std::vector<bool> free;            // by the first cell of a floor: whether it leads on
    Places deadFloors;
    Places traps;
    std::vector<RunnerState> entrances;
};
