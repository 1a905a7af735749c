// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "drawing/TextLayout.h"

class FontFile;

// A TrueType font as one texture of 81 characters, and text painted from it. The drawer owns the
// fonts. The font library is used only while the texture is built, in the constructor; GL must be
// up by then. A font is never rebuilt and its texture lives to the end of the process. Main thread.
class OpenGLFont {
public:
    // Looks for the file in the system's font folders and then in "fonts" beside the executable;
    // size in pixels. A failure prints a line and leaves the font invalid.
    OpenGLFont(const std::string& fileName, float size);

    bool isValid() const { return valid; }

    // Paints text, wrapped at wrapWidth units. The top left corner of the first line is at x, y; a
    // scale of 1 paints one pixel of the atlas as one unit. The step from line to line is the same
    // at every scale.
    void draw(const std::string& text, float x, float y, float wrapWidth, float scale, float r,
              float g, float b, float a) const;

    // Initialises the font library, once for the whole program, until it exits.
    static void startLibrary();

private:
    struct Library {
        Library();
        ~Library();
    };

    bool buildAtlas(const FontFile& file); // false if it would be too large for a texture
    void paintGlyph(const FontGlyph& glyph, float x, float y, float scale, float r, float g,
                    float b, float a) const;

    std::uint32_t texture = 0;     // GL name of the atlas
    std::vector<FontGlyph> glyphs; // in the order of the character set
    std::int32_t atlasSize = 0;    // side of the square atlas in pixels, a power of two
    float lineHeight = 0;          // pixels of the atlas
    bool valid = false;
};
