// SPDX-License-Identifier: Zlib
#pragma once

#include <string>
#include <vector>

// A character of a font in its atlas; all sizes are in pixels of the atlas.
struct FontGlyph {
    char character = ' ';
    float x = 0; // top left corner of its cell
    float y = 0;
    float width = 0;   // of its quad
    float offset = 0;  // from the pen to its quad, 0 or negative
    float advance = 0; // of the pen
};

// A line of text, one entry per character. An entry is null if the font lacks the character, which
// then leaves a gap as wide as a blank.
using TextLine = std::vector<const FontGlyph*>;

// The first glyph of a character in a font, null if there is none.
const FontGlyph* findGlyph(const std::vector<FontGlyph>& font, char character);

// How far the pen moves after an entry of a line, in pixels of the atlas.
float advanceOf(const std::vector<FontGlyph>& font, const FontGlyph* entry);

// Breaks a text into lines at line feeds, and where a line, each advance times the scale, reaches
// wrapWidth. Such a line is broken at its last blank, which is dropped; without a blank, it is
// broken before the character that reached wrapWidth. Once a line has been broken at a blank, later
// lines without a blank keep that character. Every line has at least one character, so the layout
// always ends.
std::vector<TextLine> breakIntoLines(const std::vector<FontGlyph>& font, const std::string& text,
                                     float wrapWidth, float scale);
