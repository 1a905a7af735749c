// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

// What the drawer knows about a texture. The picture lies in the texture's top left corner; the
// texture may be larger, since its sides are powers of two.
struct TextureRecord {
    std::uint32_t name = 0;   // of the GL texture
    std::uint16_t width = 0;  // of the picture, in pixels
    std::uint16_t height = 0; // of the picture, in pixels
    float uExtent = 1;        // width of the picture / width of the texture
    float vExtent = 1;        // height of the picture / height of the texture
};
