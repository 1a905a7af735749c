// SPDX-License-Identifier: Zlib
#pragma once

#include <string>
#include <vector>

#include "game/Player.h"
#include "tools/Inspector.h"

class LevelMap;

// A replay that wins the shipped level, step by step by the rules alone.
struct GoalRun {
    struct Frame {
        Inspector::Motion before; // of the runner, before the step
        HeldKeys held;
        bool action = false; // pressed for this step
    };

    // The frames of tests/replays/NAME.txt up to the one that reaches the goal; empty if the
    // replay does not get there.
    static std::vector<Frame> find(const LevelMap& map, const std::string& name = "goal");

    // The shipped level.
    static LevelMap loadLevel();
};
