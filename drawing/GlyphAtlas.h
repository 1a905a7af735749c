// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include "drawing/LoadedImage.h"

// A square picture, white and clear, into which the characters of a font are copied before it
// becomes a texture.
class GlyphAtlas {
public:
    // The side, in pixels, is the smallest power of two that is not below `side` and has room for
    // `width` by `height` pixels.
    GlyphAtlas(int side, int width, int height);

    int getSize() const { return size; }                           // pixels
    const std::uint8_t* getPixels() const { return pixels.get(); } // RGBA, size x size

    // Copies a surface of 4 bytes a pixel as it is, without blending. What would lie outside the
    // picture is left out.
    void copy(const SDL_Surface& surface, int left, int top);

private:
    int size;
    PixelBuffer pixels;
};
