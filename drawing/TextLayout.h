// SPDX-License-Identifier: Zlib
#pragma once

#include <string>
#include <vector>

// A character of a font in its atlas; all sizes in pixels of the atlas.
struct FontGlyph {
    char character = ' ';
    float x = 0; // top left corner of its cell
    float y = 0;
    float width = 0;   // of its quad
    float offset = 0;  // of its quad against the pen, 0 or negative
    float advance = 0; // of the pen
};

// A line of text: a glyph each, null for a character that the font lacks, which takes the room of
// a blank.
using TextLine = std::vector<const FontGlyph*>;

// The first glyph of a character in a font, null if it has none.
const FontGlyph* findGlyph(const std::vector<FontGlyph>& font, char character);

// Step of the pen behind an entry of a line, in pixels of the atlas.
float advanceOf(const std::vector<FontGlyph>& font, const FontGlyph* entry);

// Breaks a text into lines at line feeds and wherever a line, each step times the scale, reaches
// wrapWidth: at its last blank, which is dropped, or else before the character that reached it.
// Once a line has been broken at a blank, a later word without one keeps the character that
// overran. Every line takes at least one character, so the text always comes to its end.
std::vector<TextLine> breakIntoLines(const std::vector<FontGlyph>& font, const std::string& text,
                                     float wrapWidth, float scale);
