// SPDX-License-Identifier: Zlib
// Fonts on the screen: each character against the font library's own picture of it.
#include <SDL.h>

#include <algorithm>
#include <string>

#include "base/FilePath.h"
#include "drawing/FontFile.h"
#include "drawing/OpenGLFont.h"
#include "tests/support/GlWindow.h"

static GlWindow* const window = GlWindow::open();

static const std::string fontName = "MarsNeedsCunnilingus.ttf"; // the game's

static FontFile openFile(int size) {
    return {FilePath::getDataDirectory().join("fonts").join(fontName).text(), size};
}

// White text with its top left corner at x, 100.
static Picture paint(const OpenGLFont& font, const std::string& text, float scale = 1,
                     float wrapWidth = 5000, float x = 100) {
    return window->paint(
        [&](OpenGLDrawer&) { font.draw(text, x, 100, wrapWidth, scale, 1, 1, 1, 1); });
}

// How many pixels differ from the library's picture of a character with its top left corner at 100,
// top, of which only the first `width` columns show.
static int wrongPixels(const Picture& picture, const SDL_Surface* ink, int top, int width) {
    int wrong = 0;
    for (int y = 80; y < 200; ++y) {
        for (int x = 80; x < 200; ++x) {
            const int column = x - 100;
            const int row = y - top;
            int level = 0;
            if (ink && column >= 0 && column < std::min(ink->w, width) && row >= 0 &&
                row < ink->h) {
                level = static_cast<const Uint8*>(ink->pixels)[row * ink->pitch + column * 4 + 3];
            }
            wrong += !picture.at(x, y).isNear({level, level, level}, 3);
        }
    }
    return wrong;
}

TEST(OpenGLFont, ShowsEveryCharacterOnOneBaselineAndNothingOfItsNeighbours) {
    const std::string characters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-=.,;:'?()!\"\\/<>_ ";
    for (const int size : {48, 8}) { // in the smaller one, ink is wider than its step
        const FontFile file = openFile(size);
        ASSERT_TRUE(file.isOpen());
        const OpenGLFont font(fontName, static_cast<float>(size) + 0.9f); // cut to whole pixels
        ASSERT_TRUE(font.isValid());
        int widest = 0;
        for (const char character : characters) {
            widest = std::max(widest, file.measure(character).advance);
        }
        const int baseline = paint(font, "H").ink().top + file.measure('H').maxY;
        for (const char character : characters) {
            const FontFile::Metrics metrics = file.measure(character);
            if (metrics.inkWidth() > widest) continue; // it reaches into the next cell
            // Ink that is wider than the step is centred on it.
            const int width = std::max(metrics.inkWidth(), metrics.advance);
            const float pen = 100 + 0.5f * static_cast<float>(width - metrics.advance);
            const Picture picture = paint(font, {character}, 1, 5000, pen);
            EXPECT_EQ(
                wrongPixels(picture, file.render(character).get(), baseline - metrics.maxY, width),
                0)
                << "'" << character << "' at size " << size;
        }
    }
}

TEST(OpenGLFont, StepsByTheScaledAdvanceAndByWholeLines) {
    const FontFile file = openFile(64);
    const OpenGLFont font(fontName, 64);
    const auto moved = [](const Picture::Box& box, int x, int y) {
        return Picture::Box{box.left + x, box.top + y, box.right + x, box.bottom + y};
    };
    const Picture::Box letter = paint(font, "E").ink();
    const int blank = file.measure(' ').advance;
    const int line = paint(font, "\nE").ink().top - letter.top;
    EXPECT_GE(line, file.lineHeight() + 4);
    EXPECT_EQ(paint(font, " E").ink(), moved(letter, blank, 0));
    EXPECT_EQ(paint(font, "\200E").ink(), moved(letter, blank, 0)) << "an unknown character";
    const auto narrow = static_cast<float>(blank + file.measure('E').advance); // reached by the E
    EXPECT_EQ(paint(font, " E", 1, narrow).ink(), moved(letter, 0, line));

    const Picture::Box half = paint(font, "E", 0.5f).ink();
    EXPECT_NEAR(half.bottom - half.top, (letter.bottom - letter.top) / 2, 2);
    EXPECT_EQ(paint(font, "\nE", 0.5f).ink(), moved(half, 0, line)) << "lines keep their distance";
    EXPECT_NEAR(paint(font, "EE", 0.5f).ink().right - half.right, file.measure('E').advance / 2, 1);
}

// What is printed when a font cannot be created.
static std::string complaintOf(const std::string& name, float size = 30) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(window->drawer().createFont(name, size), 0);
    return testing::internal::GetCapturedStdout();
}

TEST(OpenGLFont, AMissingFileOrAHugeSizePrintsALineAndMakesNoFont) {
    EXPECT_EQ(complaintOf("missing.ttf"), "OpenGLFont: Could not find font: missing.ttf\n");
    EXPECT_EQ(complaintOf(""), "OpenGLFont: Could not find font: \n") << "a folder";
    EXPECT_EQ(complaintOf(fontName, 4000), "OpenGLFont: Could not load font: " + fontName + "\n")
        << "no texture would hold it";
}
