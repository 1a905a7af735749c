// SPDX-License-Identifier: Zlib
// Fonts on the screen: each character against the font library's own picture of it.
#include <SDL.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/FilePath.h"
#include "drawing/FontFile.h"
#include "drawing/OpenGLFont.h"
#include "tests/support/GlWindow.h"

static GlWindow* const window = GlWindow::open();

static const std::string fontName = "MarsNeedsCunnilingus.ttf"; // the game's
static const std::string characters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-=.,;:'?()!\"\\/<>_ ";

static std::string fontPath() {
    return FilePath::getDataDirectory().join("fonts").join(fontName).text();
}

// What a font of one size must be like, by the library's own measures.
struct ExpectedFont {
    FontFile file;
    int maxAdvance = 0; // pixels
    int maxHeight = 0;
    int lineHeight = 0;

    explicit ExpectedFont(int size) : file(fontPath(), size) {
        for (const char character : characters) {
            const FontFile::Metrics metrics = file.measure(character);
            maxAdvance = std::max(maxAdvance, metrics.advance);
            if (metrics.inkHeight() > maxHeight) maxHeight = metrics.inkHeight() + 1;
        }
        lineHeight = std::max(file.lineHeight(), maxHeight) + 4;
    }

    int widthOf(const std::string& text) const {
        int width = 0;
        for (const char character : text) width += file.measure(character).advance;
        return width;
    }
};

// The picture of white text in a font that is made for it.
static Picture paint(const OpenGLFont& font, const std::string& text, float x, float y,
                     float wrapWidth, float scale = 1) {
    return window->paint(
        [&](OpenGLDrawer&) { font.draw(text, x, y, wrapWidth, scale, 1, 1, 1, 1); });
}

// How many pixels of a character with its quad at 100, 100 differ from the library's picture of it;
// everything else must be black.
static int wrongPixels(const Picture& picture, const ExpectedFont& expected, char character) {
    const FontFile::Metrics metrics = expected.file.measure(character);
    const FontFile::Surface ink = expected.file.render(character);
    const int width = std::max(metrics.inkWidth(), metrics.advance);
    const int top = 100 + expected.maxHeight - 1 - metrics.maxY;
    int wrong = 0;
    for (int y = 80; y < 300; ++y) {
        for (int x = 80; x < 300; ++x) {
            int level = 0;
            const int column = x - 100;
            const int row = y - top;
            const bool inQuad = column < width && y >= 100 && y < 100 + expected.lineHeight + 2;
            if (ink && inQuad && column >= 0 && column < ink->w && row >= 0 && row < ink->h) {
                const auto* pixels = static_cast<const Uint8*>(ink->pixels);
                level = pixels[row * ink->pitch + column * 4 + 3];
            }
            if (!picture.at(x, y).isNear({level, level, level}, 3)) ++wrong;
        }
    }
    return wrong;
}

TEST(OpenGLFont, ShowsEveryCharacterOnItsBaselineAndNothingOfItsNeighbours) {
    int overhanging = 0;
    for (const int size : {48, 8}) { // in the smaller one, ink is wider than its step
        const ExpectedFont expected(size);
        ASSERT_TRUE(expected.file.isOpen());
        const OpenGLFont font(fontName, static_cast<float>(size) + 0.9f); // cut to whole pixels
        ASSERT_TRUE(font.isValid());
        for (const char character : characters) {
            const FontFile::Metrics metrics = expected.file.measure(character);
            if (metrics.inkWidth() > expected.maxAdvance) continue; // reaches into the next cell
            const int overhang = std::max(0, metrics.inkWidth() - metrics.advance);
            overhanging += overhang > 0;
            const float x = 100 + static_cast<float>(overhang) * 0.5f; // of the pen
            const Picture picture = paint(font, {character}, x, 100, 5000);
            EXPECT_EQ(wrongPixels(picture, expected, character), 0)
                << "'" << character << "' at size " << size;
        }
    }
    EXPECT_GT(overhanging, 5);
}

TEST(OpenGLFont, StepsByTheScaledAdvanceAndByWholeLines) {
    const ExpectedFont expected(64);
    const OpenGLFont font(fontName, 64);
    const auto boxOf = [&](const std::string& text, float scale = 1) {
        return paint(font, text, 100, 100, 5000, scale).ink();
    };
    const auto moved = [](const Picture::Box& box, int x, int y) {
        return Picture::Box{box.left + x, box.top + y, box.right + x, box.bottom + y};
    };
    const Picture::Box letter = boxOf("E");
    const int blank = expected.widthOf(" ");
    EXPECT_EQ(boxOf(" E"), moved(letter, blank, 0));
    EXPECT_EQ(boxOf(std::string("\x80") + "E"), moved(letter, blank, 0))
        << "a character without a picture takes the room of a blank";
    const auto narrow = static_cast<float>(blank + expected.widthOf("E")); // reached by the E
    EXPECT_EQ(paint(font, " E", 100, 100, narrow).ink(), moved(letter, 0, expected.lineHeight));
    EXPECT_EQ(boxOf("\n\nE\n"), moved(letter, 0, 2 * expected.lineHeight));

    const Picture::Box half = boxOf("E", 0.5f);
    EXPECT_NEAR(half.bottom - half.top, (letter.bottom - letter.top) / 2, 2);
    EXPECT_NEAR(half.right - half.left, (letter.right - letter.left) / 2, 2);
    EXPECT_EQ(boxOf("\nE", 0.5f), moved(half, 0, expected.lineHeight))
        << "lines keep their distance";
    EXPECT_NEAR(boxOf("EE", 0.5f).right - half.right, expected.widthOf("E") * 0.5, 1);
}

TEST(OpenGLFont, TakesColourAndIsReachedByItsNumber) {
    OpenGLDrawer& drawer = window->drawer();
    EXPECT_EQ(drawer.createFont(fontName, 64), 1);
    EXPECT_EQ(drawer.createFont(fontName, 32), 2);
    const auto write = [](std::int32_t font) {
        return window->paint([=](OpenGLDrawer& painter) {
            painter.drawText("Speed:", font, 384, 40, 1024, 1, 1, 0, 1, 1);
        });
    };
    EXPECT_GT(write(1).ink().bottom, write(2).ink().bottom + 15);
    EXPECT_GT(write(1).count({255, 0, 255}), 100);
}

// --- finding the file

// A folder in place of the system's drive; the file among its fonts is not a font.
class FontFolder {
public:
    explicit FontFolder(const std::string& name) {
        const std::filesystem::path fonts = root / "Windows" / "Fonts";
        std::filesystem::create_directories(fonts);
        std::ofstream(fonts / name) << "not a font";
        setenv("SystemDrive", root.c_str(), 1);
    }
    ~FontFolder() {
        unsetenv("SystemDrive");
        std::filesystem::remove_all(root);
    }

private:
    std::filesystem::path root = testing::TempDir() + "tarnwick-fonts-" + std::to_string(getpid());
};

// What creating a font prints; nothing if it succeeds.
static std::string complaintOf(const std::string& name, float size = 30) {
    testing::internal::CaptureStdout();
    const std::int32_t font = window->drawer().createFont(name, size);
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(font > 0, printed.empty()) << printed;
    return printed;
}

TEST(OpenGLFontFile, ThatIsMissingBrokenOrTooLargeGivesNoFontAndALine) {
    EXPECT_EQ(complaintOf("missing.ttf"), "OpenGLFont: Could not find font: missing.ttf\n");
    EXPECT_EQ(complaintOf(""), "OpenGLFont: Could not find font: \n") << "a folder is no font";
    EXPECT_EQ(complaintOf(fontName, 4000), "OpenGLFont: Could not load font: " + fontName + "\n")
        << "no texture would hold it";
    const FontFolder folder("broken.ttf");
    EXPECT_EQ(complaintOf("broken.ttf"), "OpenGLFont: Could not load font: broken.ttf\n");
}

TEST(OpenGLFontFile, OfTheSystemIsPreferred) {
    const FontFolder folder(fontName);
    EXPECT_EQ(complaintOf(fontName), "OpenGLFont: Could not load font: " + fontName + "\n");
}
