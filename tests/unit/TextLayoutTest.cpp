// SPDX-License-Identifier: Zlib
#include "drawing/TextLayout.h"

#include <cmath>

#include <gtest/gtest.h>

// A font in which the pen steps 1 pixel for an i, 4 for a capital and 2 for everything else.
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

    // The lines as text, with '?' for a character that the font lacks.
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

TEST_F(TextLayout, BreaksAtBlanksOrElseBeforeTheCharacterThatReachesTheWidth) {
    const struct {
        std::string text;
        float width;
        Lines lines;
    } cases[] = {
        // A word without a blank: a line ends before the character that reaches the width.
        {"abcdef", 6, {"ab", "cd", "ef"}},
        {"iiiiWii", 5, {"iiii", "W", "ii"}},
        // The last blank of a line is dropped.
        {"abc def", 14, {"abc", "def"}},
        {"a b cd", 12, {"a b", "cd"}},
        {"a  b", 8, {"a ", "b"}},
        {"ab cd", 6, {"ab", "cd"}}, // the blank itself reaches the width
        {" abc", 8, {"", "abc"}},
        {"  ", 2, {"", ""}},
        // After a break at a blank, a long word keeps the character that overran, up to the end of
        // the text.
        {"ab cdefghi", 8, {"ab", "cdef", "ghi"}},
        {"ab cdef\nmnopqr", 8, {"ab", "cdef", "", "mnop", "qr"}},
        {"mnopqr\nab cdef", 8, {"mno", "pqr", "ab", "cdef"}},
        // A line feed ends a line, which may be empty, and the measure starts again.
        {"ab\n\ncd\n", 100, {"ab", "", "cd"}},
        {"a b\ncdef", 8, {"a b", "cde", "f"}}, // the blank is out of reach
        // A character that the font lacks is a gap as wide as a blank, and no place to break.
        {"i\xC3\x9Fi", 6, {"i??", "i"}},
        {std::string("a\0b", 3), 100, {"a?b"}},
        // Every line takes a character, however small the width.
        {"WM", 3, {"W", "M"}},
        {"a bc", -5, {"a", "", "b", "c"}},
        // Infinite and undefined widths.
        {"ab cd", NAN, {"ab cd"}},
        {"ab", -INFINITY, {"a", "b"}},
    };
    for (const auto& [text, width, lines] : cases) {
        EXPECT_EQ(wrap(text, width), lines) << '"' << text << "\" at " << width;
    }
}

TEST_F(TextLayout, TheScaleCountsTowardTheWidth) {
    EXPECT_EQ(wrap("abcd", 4.5f, 0.5f), (Lines{"abcd"}));
    EXPECT_EQ(wrap("abcd", 4, 0.5f), (Lines{"abc", "d"}));
}

TEST_F(TextLayout, AFontMayLackItsBlank) {
    EXPECT_EQ(advanceOf(font, nullptr), 2);
    EXPECT_EQ(advanceOf({}, nullptr), 0);
    EXPECT_EQ(breakIntoLines({}, "ab", 5, 1), (std::vector<TextLine>{{nullptr, nullptr}}));
}
