// SPDX-License-Identifier: Zlib
#pragma once

#include <vector>

#include "game/Player.h"
#include "tools/Inspector.h"

class LevelMap;

// The replay that wins the shipped level, as the runner goes through it.
struct GoalRun {
    struct Frame {
        Inspector::Motion before; // the step
        HeldKeys held;
        bool action = false; // pressed for this step
    };

    // All frames up to the one that reaches the goal; none if the replay does not get there.
    static std::vector<Frame> find(const LevelMap& map);

    // The shipped level.
    static LevelMap loadLevel();
};
