// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <vector>

// Stands in for the window, the clock and OpenGL when it is linked into a program: the window
// always opens, at the size asked for, with the driver features that the game needs and no others;
// every GL call counts itself and does nothing. The clock stands still but for the waits, which
// take no time. So the real application runs without a display, and what it costs is its own. SDL
// must run on its driver without a screen (SDL_VIDEODRIVER=dummy), and nobody's settings may be
// touched; `start` sees to both.
struct GlStandIn {
    static inline std::uint64_t calls = 0;          // of GL so far
    static inline std::uint32_t swaps = 0;          // frames shown so far
    static inline std::uint32_t clock = 1000;       // ms, what SDL_GetTicks gives
    static inline std::vector<std::uint32_t> waits; // ms, of each SDL_Delay so far

    // To be called before the application is made.
    static void start();
};
