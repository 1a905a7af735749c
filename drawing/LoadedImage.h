// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <memory>

// RGBA pixels as the whole game passes them: one byte each, rows from the top, tightly packed. A
// shared pointer, since they may be part of what the image library allocated; it has one owner.
using PixelBuffer = std::shared_ptr<std::uint8_t[]>;

// A decoded picture. If it could not be decoded, pixels is null and the sizes are 0.
struct LoadedImage {
    PixelBuffer pixels;       // width x height x 4 bytes
    std::uint32_t width = 0;  // in pixels, 1 to 65535
    std::uint32_t height = 0; // in pixels, 1 to 65535
};
