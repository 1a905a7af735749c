// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <memory>

// Pixels as everything in the game passes them: red, green, blue, alpha, one byte each, rows from
// the top and packed tight. Whoever holds the buffer owns it.
using PixelBuffer = std::unique_ptr<std::uint8_t[]>;

// A decoded picture. One that could not be decoded has null pixels and sizes of 0.
struct LoadedImage {
    PixelBuffer pixels;       // width x height x 4 bytes
    std::uint32_t width = 0;  // in pixels, 1 to 65535
    std::uint32_t height = 0; // in pixels, 1 to 65535
};
