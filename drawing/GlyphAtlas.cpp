// SPDX-License-Identifier: Zlib
#include "drawing/GlyphAtlas.h"

#include <algorithm>
#include <bit>
#include <cstring>

static constexpr std::size_t pixelBytes = 4;

GlyphAtlas::GlyphAtlas(int side, int width, int height)
    : size(static_cast<int>(
          std::bit_ceil(static_cast<std::uint32_t>(std::max({side, width, height}))))) {
    const std::size_t bytes =
        static_cast<std::size_t>(size) * static_cast<std::size_t>(size) * pixelBytes;
    pixels.reset(new std::uint8_t[bytes]); // make_unique would clear it first
    constexpr std::uint8_t clearWhite[pixelBytes] = {255, 255, 255, 0};
    for (std::size_t i = 0; i < bytes; i += pixelBytes) {
        std::memcpy(pixels.get() + i, clearWhite, pixelBytes); // byte by byte it would take 10 ms
    }
}

void GlyphAtlas::copy(const SDL_Surface& surface, int left, int top) {
    const int columns = std::min(surface.w, size - left);
    if (columns <= 0 || left < 0) return;
    for (int row = std::max(0, -top); row < surface.h && top + row < size; ++row) {
        const auto place = static_cast<std::size_t>(top + row) * static_cast<std::size_t>(size) +
                           static_cast<std::size_t>(left);
        std::memcpy(pixels.get() + place * pixelBytes,
                    static_cast<const Uint8*>(surface.pixels) + row * surface.pitch,
                    static_cast<std::size_t>(columns) * pixelBytes);
    }
}
