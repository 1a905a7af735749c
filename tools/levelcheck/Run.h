// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "game/LevelMap.h"
#include "game/PlayRules.h"
#include "game/Player.h"

// The input of one frame.
struct Input {
    enum Direction : std::uint8_t { none, left, right };

    Direction direction = none;
    bool press = false; // of Action

    HeldKeys held() const { return {false, direction == left, direction == right, false}; }
};

// The inputs from the start of a play on, one a frame.
using Inputs = std::vector<Input>;

// One frame of the play.
void step(Player& player, Input input, const LevelMap& map);

// What the checker takes a player to be able to do: hold a direction for this many frames or more,
// and press Action with this many frames from press to press.
inline constexpr int shortestHold = 4;
inline constexpr int pressGap = 10;

// Frames as seconds of play, and the other way round.
inline double secondsOf(std::size_t frames) {
    return static_cast<double>(frames) * framePeriod / 1000;
}
inline constexpr int framesIn(int seconds) {
    return seconds * 1000 / static_cast<int>(framePeriod);
}

// Plays inputs on a level with the game's own rules. Frames are counted from 0, the first that
// moves the runner.
struct Run {
    Run(const LevelMap& map, const Inputs& inputs);

    Player player{playStart};     // at the end
    std::vector<WorldPoint> path; // after each frame, the goal's frame being the last
    bool goal = false;
};

// The same run, to the goal in the same frame and place, without the changes of direction and the
// presses that it does not need.
Inputs simplified(const LevelMap& map, const Inputs& inputs);

// A run as a file for tarnwick-replay, after its header: six keys page through the title, the run
// follows, and the epilogue goes on until its last text.
std::string scriptOf(const Inputs& inputs, const std::string& header);

// The script's frame in which the epilogue begins.
std::size_t epilogueFrame(const Inputs& inputs);
