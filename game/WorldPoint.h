// SPDX-License-Identifier: Zlib
#pragma once

#include <algorithm>

// A position in the world or the camera, in tiles: x grows to the right, y downward. A tile is 64
// by 64 units of the virtual screen.
struct WorldPoint {
    float x = 0;
    float y = 0;
};

inline constexpr float tileUnits = 64; // side of a tile in units of the virtual screen

// The left and top edge of the virtual screen are this far from the camera, in tiles.
inline constexpr int cameraColumns = 11;
inline constexpr int cameraRows = 6;

// The camera that always shows the runner's tile at (608, 480) of the virtual screen.
constexpr WorldPoint cameraFor(WorldPoint runner) {
    return {runner.x + 1.5f, runner.y - 1.5f};
}

// The cell of a coordinate, cut toward zero. The bounds, which no level reaches, keep the
// conversion to an integer defined, also for a coordinate that is not a number.
inline int cellOf(float coordinate) {
    constexpr float bound = 1e9f;
    return static_cast<int>(coordinate > -bound ? std::min(coordinate, bound) : -bound);
}
