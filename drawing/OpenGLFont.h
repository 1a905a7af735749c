// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "drawing/TextLayout.h"

class FontFile;

// A TrueType font: one texture with 81 characters, and text painted from it. The drawer owns the
// fonts. The constructor builds the texture and needs a GL context; painting no longer needs the
// font library. A font is never rebuilt, and its texture lives to the end of the process. Main
// thread.
class OpenGLFont {
public:
    // Searches the system's font folders for the file, then "fonts" beside the executable; size in
    // pixels. A failure prints a line and leaves the font invalid.
    OpenGLFont(const std::string& fileName, float size);

    bool isValid() const { return valid; }

    // Paints text, wrapped at wrapWidth units. The top left corner of the first line is at x, y. At
    // scale 1 a pixel of the atlas is a unit. The distance between lines does not depend on the
    // scale.
    void draw(const std::string& text, float x, float y, float wrapWidth, float scale, float r,
              float g, float b, float a) const;

    // Initialises the font library for the rest of the process; later calls do nothing.
    static void startLibrary();

private:
    struct Library {
        Library();
        ~Library();
    };

    bool buildAtlas(const FontFile& file); // false if the atlas would be too large for a texture
    void paintGlyph(const FontGlyph& glyph, float x, float y, float scale) const;

    std::uint32_t texture = 0;     // GL name of the atlas
    std::vector<FontGlyph> glyphs; // in the order of the character set
    std::int32_t atlasSize = 0;    // side of the square atlas in pixels, a power of two
    float lineHeight = 0;          // pixels of the atlas
    bool valid = false;
};
