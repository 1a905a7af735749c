// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

#include "tools/Inspector.h"
#include "tools/levelcheck/Run.h"

// What a hand does in a stretch of frames: a direction all through, and at most one press.
struct Stretch {
    static constexpr int frames = shortestHold;
    static constexpr std::uint8_t noPress = frames;

    Input::Direction direction = Input::none;
    std::uint8_t press = noPress; // the frame of the press, counted in the stretch
};

// All that matters of the runner between two stretches, and the way there. A record of a search,
// which has tens of millions of them.
struct RunnerState {
    float x = 0; // units as in Player
    float y = 0;
    float vx = 0;
    float vy = 0;
    std::uint32_t parent = 0;   // the state before the stretch
    std::uint16_t changes = 0;  // of direction, and presses, on the whole way
    std::uint8_t wait : 4 = 0;  // frames until the hand can press again
    std::uint8_t edges : 4 = 0; // states that were reached from here
    bool kicking : 1 = false;
    bool winning : 1 = false;                  // a stretch from here reaches the goal
    bool resting : 1 = false;                  // a stretch from here leads back here
    std::uint8_t press : 3 = Stretch::noPress; // the stretch that led here
    Input::Direction direction : 2 = Input::none;

    static RunnerState of(const Player& player);

    // A runner in this state. Only what its picture shows is lost.
    Player player() const;

    int column() const { return cellOf(x); }
    int row() const { return cellOf(y); }

    // On the ground and at no speed up or down; whoever stands can walk along the floor.
    bool isStanding(const LevelMap& map) const {
        return !kicking && vy == 0 && isFloor(map, column(), row());
    }
    static bool isFloor(const LevelMap& map, int column, int row) {
        return map.at(column, row) == LevelMap::empty && LevelMap::isRock(map.at(column, row + 1));
    }

    // Whether it is so near the start that the play could begin anew.
    bool isNearStart() const;

    // States with the same key are taken for one: cell, flight of a kick, steps of the two speeds
    // and of the wait. Rising is told apart more finely than falling, since it decides how far up
    // the way goes, and the speeds near 0, at which the runner stays in a cell for long.
    std::uint64_t key() const;

    // The key in words.
    static const char* resolution();
};
static_assert(sizeof(RunnerState) == 24);
