// SPDX-License-Identifier: Zlib
#pragma once

#include "game/LevelMap.h"
#include "tools/levelcheck/Places.h"

// People who press keys by chance: how many of them reach the goal all the same, and where they
// are stuck. The same players every time.
class RandomPlayers {
public:
    static constexpr int count = 2000;

    explicit RandomPlayers(const LevelMap& map);

    int getWinners() const { return winners; } // within 40 seconds
    const Places& getStuck() const { return stuck; }

private:
    void play(const LevelMap& map, unsigned seed);

    int winners = 0;
    Places stuck;
};
