// SPDX-License-Identifier: Zlib
#pragma once

#include <GL/glew.h>

#include <array>
#include <cstdint>
#include <string>

#include "drawing/LoadedImage.h"

// The font of last resort: one square image for each letter, each digit and a few signs. It needs
// no font file, so text shows even where none can be read. The drawer owns it and uses it only
// while it has a GL context. Main thread.
class GlyphFont {
public:
    // Makes all 44 glyphs white squares; their images are lost.
    void makeBlank();

    // Sets the image of a glyph, size by size pixels; filter is GL_LINEAR or GL_NEAREST. Null
    // pixels, an unknown glyph and a size of 0 or above 32768 change nothing.
    void setImage(int index, PixelBuffer pixels, std::uint32_t size, GLint filter);

    // Paints text on one line with its top left corner at x, y, each glyph size by size units. A
    // character without a glyph leaves a gap.
    void draw(const std::string& text, float x, float y, float size, float r, float g, float b,
              float a) const;

private:
    struct Glyph {
        GLuint name = 0;         // of the GL texture
        std::uint32_t width = 0; // pixels, a power of two
    };

    std::array<Glyph, 44> glyphs;
    std::uint32_t glyphPadding = 0; // pixels; padding of the last image that needed any
};
