// SPDX-License-Identifier: Zlib
#pragma once

#include <string>
#include <vector>

#include "game/Player.h"
#include "tools/Inspector.h"

class LevelMap;

// A replay that wins the shipped level, by the rules alone.
struct GoalRun {
    struct Frame {
        Inspector::Motion before; // the step
        HeldKeys held;
        bool action = false; // pressed for this step
    };

    // The frames of tests/replays/NAME.txt up to the one that reaches the goal; none if it does
    // not.
    static std::vector<Frame> find(const LevelMap& map, const std::string& name = "goal");

    // The shipped level.
    static LevelMap loadLevel();
};
