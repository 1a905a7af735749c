// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <vector>

#include "game/LevelMap.h"
#include "game/Player.h"

// What a hand does in one frame.
struct Input {
    enum Direction : std::uint8_t { none, left, right };

    Direction direction = none;
    bool press = false; // of Action

    bool operator==(const Input&) const = default;

    HeldKeys held() const { return {false, direction == left, direction == right, false}; }
};

// What a hand does from the start of a play on, a record a frame.
using Inputs = std::vector<Input>;

// A frame of the play with a hand on the keys.
void step(Player& player, Input input, const LevelMap& map);

// The limits of a hand: a direction is held so many frames, and presses are so many frames apart.
inline constexpr int shortestHold = 4;
inline constexpr int pressGap = 10;

inline constexpr float goalSpeed = 1.5f; // tiles per frame, in a kick

// The exact play of a row of inputs on a level. Frames are counted from 0, the first that moves.
class Run {
public:
    static constexpr WorldPoint start = {60, 984};

    Run(const LevelMap& map, const Inputs& inputs);

    // Where the runner is behind each frame, the goal's frame being the last.
    const std::vector<WorldPoint>& getPath() const { return path; }
    bool reachesGoal() const { return goal; }

    // The frame of the goal, or the number of frames.
    std::size_t getLength() const { return goal ? path.size() - 1 : path.size(); }

private:
    std::vector<WorldPoint> path;
    bool goal = false;
};

// The same run, to the goal in the same frame and place, with all changes of direction and presses
// left out that it can do without.
Inputs calmed(const LevelMap& map, const Inputs& inputs);
