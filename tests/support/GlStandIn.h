// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <vector>

// Replaces the window, the clock and OpenGL in a program that links it. So the real application
// runs without a display, and a measurement contains only its own work. The window opens at the
// requested size, unless `fails`, with only the driver features that the game needs. Each GL call
// is counted and does nothing. The clock advances only by the waits, which take no time.
struct GlStandIn {
    static inline std::uint64_t calls = 0;          // of GL so far
    static inline std::uint32_t swaps = 0;          // frames shown so far
    static inline std::uint32_t clock = 1000;       // ms, the result of SDL_GetTicks
    static inline std::vector<std::uint32_t> waits; // ms, of each SDL_Delay so far

    // Whether the window or OpenGL's entry points are refused now.
    static inline bool (*fails)() = [] { return false; };

    static inline void (*windowOpened)() = [] {}; // called when the window opens

    // Selects SDL's dummy video driver and a settings folder that cannot exist. Call it before the
    // application is built.
    static void start();
};
