// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/Inspector.h"
#include "tools/levelcheck/Run.h"

// Where a cell is in an array of all cells, row after row from the top.
inline std::size_t cellIndex(const LevelMap& map, int column, int row) {
    return static_cast<std::size_t>(row) * map.getWidth() + static_cast<std::size_t>(column);
}

// The input of a few frames: one direction throughout, and at most one press.
struct Segment {
    static constexpr int frames = shortestHold;
    static constexpr std::uint8_t noPress = frames;

    Input::Direction direction = Input::none;
    std::uint8_t press = noPress; // the frame of the press, counted in the segment

    Input input(int frame) const { return {direction, press == frame}; }
};

// The runner between two segments, and how it came there. A search has tens of millions of these
// records.
struct RunnerState {
    float x = 0; // units as in Player
    float y = 0;
    float vx = 0;
    float vy = 0;
    std::uint32_t parent = 0;   // the state before the last segment
    std::uint8_t wait : 4 = 0;  // frames until the next press
    std::uint8_t edges : 4 = 0; // see Search::getEdges
    bool kicking : 1 = false;
    bool winning : 1 = false; // a segment from here reaches the goal
    bool resting : 1 = false; // a segment from here leads back here
    Segment last = {};

    static RunnerState of(const Player& player);

    // A runner in this state. Only what its picture shows is lost.
    Player player() const;

    int column() const { return cellOf(x); }
    int row() const { return cellOf(y); }

    // On the ground with no vertical speed, so that it can walk along the floor.
    bool isStanding(const LevelMap& map) const {
        return !kicking && vy == 0 && isFloor(map, column(), row());
    }
    static bool isFloor(const LevelMap& map, int column, int row) {
        return map.at(column, row) == LevelMap::empty && LevelMap::isRock(map.at(column, row + 1));
    }

    // Whether it is so near the start that the play could begin again.
    bool isNearStart() const;

    // States with the same key count as the same: see docs/levelcheck.md.
    std::uint64_t key() const;
};
static_assert(sizeof(RunnerState) == 24);

// The states of a search in the order in which they were found, one for each key. A search waits
// for memory most of the time, so callers hash several states before they add the first.
class StateSet {
public:
    static constexpr std::uint32_t missing = ~0U;

    // Reserves address space for `most` states, at most 2^26 - 1, so that growing copies nothing.
    explicit StateSet(std::uint32_t most);

    std::uint32_t size() const { return static_cast<std::uint32_t>(states.size()); }
    RunnerState& operator[](std::uint32_t index) { return states[index]; }
    const RunnerState& operator[](std::uint32_t index) const { return states[index]; }

    // The hash of its key. Begins to load from memory what findOrAdd needs.
    std::uint64_t prepare(const RunnerState& state) const;

    // The state with the same key. If there is none, adds this one and returns `missing`.
    std::uint32_t findOrAdd(const RunnerState& state, std::uint64_t hash);

private:
    std::size_t firstSlot(std::uint64_t hash) const;
    std::size_t next(std::size_t slot) const { return slot + 1 == slots.size() ? 0 : slot + 1; }
    void grow();

    std::vector<RunnerState> states;
    std::vector<std::uint32_t> slots; // 0, or state + 1 with bits of the key's hash above it
};
