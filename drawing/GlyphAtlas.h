// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include "drawing/LoadedImage.h"

// A square picture into which a font copies its characters before it uploads them as one texture.
// At first all pixels are white and fully transparent. A font owns it while it is built.
class GlyphAtlas {
public:
    // The side, in pixels, is the smallest power of two that is at least `side` and has room for
    // `width` by `height` pixels.
    GlyphAtlas(int side, int width, int height);

    int getSize() const { return size; }                           // pixels
    const std::uint8_t* getPixels() const { return pixels.get(); } // RGBA, size x size

    // Copies a surface of 4 bytes per pixel without blending. Parts outside the picture are left
    // out.
    void copy(const SDL_Surface& surface, int left, int top);

private:
    int size;
    PixelBuffer pixels;
};
