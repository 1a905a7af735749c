// SPDX-License-Identifier: Zlib
#include "drawing/TextLayout.h"

#include <limits>

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

TEST_F(TextLayout, AWordWithoutBlankBreaksBeforeTheCharacterThatReachesTheWidth) {
    EXPECT_EQ(wrap("abcdef", 5), (Lines{"ab", "cd", "ef"}));
    EXPECT_EQ(wrap("abcdef", 6), (Lines{"ab", "cd", "ef"})); // reached is overrun
    EXPECT_EQ(wrap("abcdef", 6.1f), (Lines{"abc", "def"}));
    EXPECT_EQ(wrap("iiiiWii", 5), (Lines{"iiii", "W", "ii"}));
    EXPECT_EQ(wrap("abc", 100), (Lines{"abc"}));
    EXPECT_EQ(wrap("", 5), Lines{});
}

TEST_F(TextLayout, ALineBreaksAtItsLastBlankWhichIsDropped) {
    EXPECT_EQ(wrap("abc def", 14), (Lines{"abc", "def"})); // reached on the last letter
    EXPECT_EQ(wrap("abc def", 14.1f), (Lines{"abc def"}));
    EXPECT_EQ(wrap("a b cd", 12), (Lines{"a b", "cd"}));
    EXPECT_EQ(wrap("a  b", 8), (Lines{"a ", "b"}));   // of two blanks the second
    EXPECT_EQ(wrap("ab cd", 6), (Lines{"ab", "cd"})); // the blank itself reaches the width
    EXPECT_EQ(wrap("ab ", 6), (Lines{"ab"}));
}

TEST_F(TextLayout, BlanksAtTheFrontOfALineMakeEmptyLines) {
    EXPECT_EQ(wrap(" abc", 8), (Lines{"", "abc"}));
    EXPECT_EQ(wrap("  ", 2), (Lines{"", ""}));
    EXPECT_EQ(wrap(" a", 1), (Lines{"", "a"}));
}

TEST_F(TextLayout, AfterABreakAtABlankALongWordKeepsTheCharacterThatOverran) {
    EXPECT_EQ(wrap("ab cdefghi", 8), (Lines{"ab", "cdef", "ghi"}));
    EXPECT_EQ(wrap("abcdef", 8), (Lines{"abc", "def"}));
    // The memory lasts to the end of the text, over line feeds too, and is not kept for the next.
    EXPECT_EQ(wrap("ab cdef\nmnopqr", 8), (Lines{"ab", "cdef", "", "mnop", "qr"}));
    EXPECT_EQ(wrap("mnopqr\nab cdef", 8), (Lines{"mno", "pqr", "ab", "cdef"}));
}

TEST_F(TextLayout, LineFeedsEndLinesAndMayLeaveThemEmpty) {
    EXPECT_EQ(wrap("ab\ncd", 100), (Lines{"ab", "cd"}));
    EXPECT_EQ(wrap("ab\n", 100), (Lines{"ab"}));
    EXPECT_EQ(wrap("\n", 100), (Lines{""}));
    EXPECT_EQ(wrap("ab\n\ncd", 100), (Lines{"ab", "", "cd"}));
    EXPECT_EQ(wrap("ab\ncd", 5), (Lines{"ab", "cd"})); // the measure starts again
    EXPECT_EQ(wrap("abc\nd", 8), (Lines{"abc", "d"}));
    EXPECT_EQ(wrap("a b\ncdef", 8), (Lines{"a b", "cde", "f"})); // the blank is out of reach
}

TEST_F(TextLayout, ACharacterOutsideTheFontIsAGapAsWideAsABlankAndNoPlaceToBreak) {
    EXPECT_EQ(wrap("i\xC3\x9Fi", 7), (Lines{"i??i"}));
    EXPECT_EQ(wrap("i\xC3\x9Fi", 6), (Lines{"i??", "i"}));
    EXPECT_EQ(wrap("a\tb", 6), (Lines{"a?", "b"}));
    EXPECT_EQ(wrap(std::string("a\0b", 3), 100), (Lines{"a?b"}));
    EXPECT_EQ(advanceOf(font, nullptr), 2);
    EXPECT_EQ(advanceOf({}, nullptr), 0);
    EXPECT_EQ(findGlyph(font, 'W'), &font[26]);
    EXPECT_EQ(findGlyph(font, 'A'), nullptr);
}

TEST_F(TextLayout, TheScaleCountsInTheMeasure) {
    EXPECT_EQ(wrap("abcd", 4.5f, 0.5f), (Lines{"abcd"}));
    EXPECT_EQ(wrap("abcd", 4, 0.5f), (Lines{"abc", "d"}));
    EXPECT_EQ(wrap("abcd", 9, 2), (Lines{"ab", "cd"}));
}

TEST_F(TextLayout, AWidthTooSmallForAnyCharacterStillTakesOneALine) {
    EXPECT_EQ(wrap("WM", 3), (Lines{"W", "M"}));
    EXPECT_EQ(wrap("iW\ni", 0), (Lines{"i", "W", "", "i"}));
    EXPECT_EQ(wrap("a bc", -5), (Lines{"a", "", "b", "c"}));
    EXPECT_EQ(wrap("\xFF\xFF", 0), (Lines{"?", "?"}));
}

TEST_F(TextLayout, WidthsThatAreNoNumbersAreNeverReachedOrAlways) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(wrap("ab cd", std::numeric_limits<float>::quiet_NaN()), (Lines{"ab cd"}));
    EXPECT_EQ(wrap("ab cd", infinity), (Lines{"ab cd"}));
    EXPECT_EQ(wrap("ab", -infinity), (Lines{"a", "b"}));
    EXPECT_EQ(wrap("ab cd", 4, std::numeric_limits<float>::quiet_NaN()), (Lines{"ab cd"}));
}
