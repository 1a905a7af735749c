// SPDX-License-Identifier: Zlib
#include "drawing/GlyphFont.h"

#include <bit>
#include <cmath>

#include "drawing/TextureTable.h"
#include "drawing/TexturedQuad.h"

static constexpr std::uint32_t blankSize = 16;        // pixels
static constexpr std::uint32_t largestSize = 1 << 15; // pixels; the largest power of two in 16 bits

// The glyph of a character, -1 for none.
static int glyphIndex(char character) {
    static const std::string punctuation = ".,+-!?:_";
    if (character >= 'A' && character <= 'Z') return character - 'A';
    if (character >= 'a' && character <= 'z') return character - 'a';
    if (character >= '0' && character <= '9') return 26 + (character - '0');
    const std::size_t place = punctuation.find(character);
    return place == std::string::npos ? -1 : 36 + static_cast<int>(place);
}

void GlyphFont::makeBlank() {
    std::array<std::uint8_t, blankSize * blankSize * 4> white;
    white.fill(255);
    for (Glyph& glyph : glyphs) {
        glDeleteTextures(1, &glyph.name); // GL ignores name 0
        glyph.name = TextureTable::upload(white.data(), blankSize, blankSize, GL_LINEAR, GL_REPEAT);
        glyph.width = blankSize;
    }
}

void GlyphFont::setImage(int index, PixelBuffer pixels, std::uint32_t size, GLint filter) {
    const bool known = index >= 0 && static_cast<std::size_t>(index) < glyphs.size();
    if (!known || !pixels || size < 1 || size > largestSize) return;
    const std::uint32_t paddedSize = std::bit_ceil(size);
    if (paddedSize != size) {
        pixels = TextureTable::padRows(pixels, size, size, paddedSize, paddedSize);
        if (!pixels) return;
        glyphPadding = paddedSize - size;
    }
    Glyph& glyph = glyphs[static_cast<std::size_t>(index)];
    glDeleteTextures(1, &glyph.name);
    glyph = {TextureTable::upload(pixels.get(), paddedSize, paddedSize, filter, GL_REPEAT),
             paddedSize};
}

void GlyphFont::draw(const std::string& text, float x, float y, float size, float r, float g,
                     float b, float a) const {
    // The glyphs overlap by the padding, which would otherwise show as a gap.
    const float trim =
        std::trunc(size / static_cast<float>(glyphs[0].width) * static_cast<float>(glyphPadding));
    const float step = size - trim;
    for (const char character : text) {
        const int index = glyphIndex(character);
        if (index >= 0) {
            glBindTexture(GL_TEXTURE_2D, glyphs[static_cast<std::size_t>(index)].name);
            glColor4f(r, g, b, a);
            paintQuad({0, 0, 1, 1}, {x, y, x + size, y + size});
            releaseTexture();
        }
        x += step;
    }
}
