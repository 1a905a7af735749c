// SPDX-License-Identifier: Zlib
#include "drawing/TextLayout.h"

#include <cmath>

#include <gtest/gtest.h>

// A font in which 'i' steps 1 pixel, capitals 4, the blank 2, and all other letters 2.
class TextLayout : public testing::Test {
protected:
    using Lines = std::vector<std::string>;

    TextLayout() {
        for (const char character : std::string("abcdefghijklmnopqrstuvwxyzWM -")) {
            FontGlyph glyph;
            glyph.character = character;
            glyph.advance = character == 'i'                       ? 1.0f
                            : character == 'W' || character == 'M' ? 4.0f
                                                                   : 2.0f;
            font.push_back(glyph);
        }
    }

    // The lines as text again, '?' standing for a character that the font lacks.
    Lines wrap(const std::string& text, float wrapWidth, float scale = 1) const {
        Lines lines;
        for (const TextLine& line : breakIntoLines(font, text, wrapWidth, scale)) {
            lines.emplace_back();
            for (const FontGlyph* entry : line) lines.back() += entry ? entry->character : '?';
        }
        return lines;
    }

    std::vector<FontGlyph> font;
};

TEST_F(TextLayout, BreaksAtBlanksAndElseBeforeTheCharacterThatReachesTheWidth) {
    const struct {
        std::string text;
        float width;
        Lines lines;
    } cases[] = {
        // A word without a blank: reached is overrun.
        {"abcdef", 5, {"ab", "cd", "ef"}},
        {"abcdef", 6, {"ab", "cd", "ef"}},
        {"abcdef", 6.1f, {"abc", "def"}},
        {"iiiiWii", 5, {"iiii", "W", "ii"}},
        {"", 5, {}},
        // The last blank of a line is dropped.
        {"abc def", 14, {"abc", "def"}},
        {"abc def", 14.1f, {"abc def"}},
        {"a b cd", 12, {"a b", "cd"}},
        {"a  b", 8, {"a ", "b"}},
        {"ab cd", 6, {"ab", "cd"}}, // the blank itself reaches the width
        {"ab ", 6, {"ab"}},
        {" abc", 8, {"", "abc"}},
        {"  ", 2, {"", ""}},
        // After a break at a blank, a long word keeps the character that overran. That lasts to the
        // end of the text, over line feeds too.
        {"ab cdefghi", 8, {"ab", "cdef", "ghi"}},
        {"ab cdef\nmnopqr", 8, {"ab", "cdef", "", "mnop", "qr"}},
        {"mnopqr\nab cdef", 8, {"mno", "pqr", "ab", "cdef"}},
        // Line feeds end lines, may leave them empty, and the measure starts again.
        {"ab\n\ncd", 100, {"ab", "", "cd"}},
        {"ab\n", 100, {"ab"}},
        {"\n", 100, {""}},
        {"ab\ncd", 5, {"ab", "cd"}},
        {"a b\ncdef", 8, {"a b", "cde", "f"}}, // the blank is out of reach
        // What the font lacks is a gap as wide as a blank and no place to break.
        {"i\xC3\x9Fi", 7, {"i??i"}},
        {"i\xC3\x9Fi", 6, {"i??", "i"}},
        {"a\tb", 6, {"a?", "b"}},
        {std::string("a\0b", 3), 100, {"a?b"}},
        // A width too small for any character still takes one a line.
        {"WM", 3, {"W", "M"}},
        {"iW\ni", 0, {"i", "W", "", "i"}},
        {"a bc", -5, {"a", "", "b", "c"}},
        // Widths that are no numbers are never reached, or always.
        {"ab cd", NAN, {"ab cd"}},
        {"ab cd", INFINITY, {"ab cd"}},
        {"ab", -INFINITY, {"a", "b"}},
    };
    for (const auto& [text, width, lines] : cases) {
        EXPECT_EQ(wrap(text, width), lines) << '"' << text << "\" at " << width;
    }
}

TEST_F(TextLayout, TheScaleCountsInTheMeasure) {
    EXPECT_EQ(wrap("abcd", 4.5f, 0.5f), (Lines{"abcd"}));
    EXPECT_EQ(wrap("abcd", 4, 0.5f), (Lines{"abc", "d"}));
    EXPECT_EQ(wrap("abcd", 9, 2), (Lines{"ab", "cd"}));
    EXPECT_EQ(wrap("ab cd", 4, NAN), (Lines{"ab cd"}));
}

TEST_F(TextLayout, AFontMayLackItsBlank) {
    EXPECT_EQ(advanceOf(font, nullptr), 2);
    EXPECT_EQ(advanceOf({}, nullptr), 0);
    EXPECT_EQ(breakIntoLines({}, "ab", 5, 1), (std::vector<TextLine>{{nullptr, nullptr}}));
}
