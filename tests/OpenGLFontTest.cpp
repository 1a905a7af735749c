// SPDX-License-Identifier: Zlib
// Fonts as they come out on the screen: each character against the font library's own picture of
// it.
#include <SDL.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/FilePath.h"
#include "drawing/FontFile.h"
#include "drawing/OpenGLFont.h"
#include "tests/GlWindow.h"

static GlWindow* const window = GlWindow::open();

static const std::string fontName = "MarsNeedsCunnilingus.ttf"; // the game's
static const std::string characters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-=.,;:'?()!\"\\/<>_ ";

static std::string fontPath() {
    return FilePath::getDataDirectory().join("fonts").join(fontName).text();
}

// What the lines of a font of one size must be like, from the library's own measures.
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

    int blank() const { return file.measure(' ').advance; }
    int baseline() const { return maxHeight - 1; }
};

// The picture of white text in a font that is made for it.
static Picture paint(const OpenGLFont& font, const std::string& text, float x, float y,
                     float wrapWidth, float scale = 1) {
    return window->paint(
        [&](OpenGLDrawer&) { font.draw(text, x, y, wrapWidth, scale, 1, 1, 1, 1); });
}

// Units by which the quad of a character begins before the pen: half of what its ink is wider than
// its step.
static float overhang(const FontFile::Metrics& metrics) {
    return static_cast<float>(std::max(0, metrics.inkWidth() - metrics.advance)) * 0.5f;
}

// How many pixels of a character with its quad at 100, 100 differ from the library's picture of it,
// laid at its place within the quad; everything else must be black.
static int wrongPixels(const Picture& picture, const ExpectedFont& expected, char character) {
    const FontFile::Metrics metrics = expected.file.measure(character);
    const FontFile::Surface ink = expected.file.render(character);
    const int width = std::max(metrics.inkWidth(), metrics.advance);
    const int top = 100 + expected.baseline() - metrics.maxY;
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
    for (const int size : {64, 48, 20, 8}) {
        const ExpectedFont expected(size);
        ASSERT_TRUE(expected.file.isOpen());
        const OpenGLFont font(fontName, static_cast<float>(size) + 0.9f); // cut to whole pixels
        ASSERT_TRUE(font.isValid());
        for (const char character : characters) {
            const FontFile::Metrics metrics = expected.file.measure(character);
            if (metrics.inkWidth() > expected.maxAdvance) continue; // reaches into the next cell
            const float x = 100 + overhang(metrics);
            overhanging += x > 100;
            const Picture picture = paint(font, {character}, x, 100, 5000);
            EXPECT_EQ(wrongPixels(picture, expected, character), 0)
                << "'" << character << "' at size " << size;
        }
    }
    EXPECT_GT(overhanging, 5) << "the smallest size is there for these";
}

TEST(OpenGLFont, LetsTheFeetOfLettersStandOnOneLine) {
    const OpenGLFont font(fontName, 64);
    const auto bottomOf = [&](const std::string& text) {
        return paint(font, text, 100, 100, 5000).ink().bottom;
    };
    const int foot = bottomOf("H");
    EXPECT_NEAR(bottomOf("x"), foot, 2);
    EXPECT_NEAR(bottomOf("E"), foot, 2);
    EXPECT_GT(bottomOf("g"), foot + 4);
}

TEST(OpenGLFont, StepsByTheScaledAdvanceAndByWholeLines) {
    const ExpectedFont expected(64);
    const OpenGLFont font(fontName, 64);
    const auto boxOf = [&](const std::string& text, float wrapWidth, float scale) {
        return paint(font, text, 100, 100, wrapWidth, scale).ink();
    };
    const auto moved = [](Picture::Box box, int x, int y) {
        return Picture::Box{box.left + x, box.top + y, box.right + x, box.bottom + y};
    };
    const Picture::Box letter = boxOf("E", 5000, 1);
    const int line = expected.lineHeight;
    EXPECT_EQ(boxOf(" E", 5000, 1), moved(letter, expected.blank(), 0));
    EXPECT_EQ(boxOf("\x80"
                    "E",
                    5000, 1),
              moved(letter, expected.blank(), 0))
        << "a character without a picture takes the room of a blank";
    EXPECT_EQ(boxOf("\nE", 5000, 1), moved(letter, 0, line));
    EXPECT_EQ(boxOf("\n\nE\n", 5000, 1), moved(letter, 0, 2 * line));

    const Picture::Box half = boxOf("E", 5000, 0.5f);
    EXPECT_NEAR(half.bottom - half.top, (letter.bottom - letter.top) / 2, 2);
    EXPECT_NEAR(half.right - half.left, (letter.right - letter.left) / 2, 2);
    EXPECT_EQ(boxOf("\nE", 5000, 0.5f), moved(half, 0, line)) << "lines keep their distance";
    const Picture::Box pair = boxOf("EE", 5000, 0.5f);
    EXPECT_NEAR(pair.right - half.right, expected.file.measure('E').advance * 0.5, 1);
}

TEST(OpenGLFont, PaintsWrappedWordsWhereLineFeedsWouldPutThem) {
    const ExpectedFont expected(40);
    const OpenGLFont font(fontName, 40);
    const auto widthOf = [&](const std::string& text) {
        int width = 0;
        for (const char character : text) width += expected.file.measure(character).advance;
        return static_cast<float>(width);
    };
    // Reached on the last letter of the second word.
    EXPECT_EQ(paint(font, "Run on", 50, 60, widthOf("Run on"))
                  .differenceTo(paint(font, "Run\non", 50, 60, 5000)),
              "");
    EXPECT_EQ(paint(font, "Run on", 50, 60, widthOf("Run on") + 1)
                  .differenceTo(paint(font, "Run on", 50, 60, 5000)),
              "");
    // Narrower than any letter: one to a line.
    EXPECT_EQ(paint(font, "Run", 50, 60, 1).differenceTo(paint(font, "R\nu\nn", 50, 60, 5000)), "");
}

TEST(OpenGLFont, TakesColourAndIsReachedByItsNumber) {
    OpenGLDrawer& drawer = window->drawer();
    const std::int32_t large = drawer.createFont(fontName, 64);
    const std::int32_t small = drawer.createFont(fontName, 32);
    EXPECT_EQ(large, 1);
    EXPECT_EQ(small, 2);
    const auto write = [](std::int32_t font, float r) {
        return window->paint([=](OpenGLDrawer& painter) {
            painter.drawText("Speed:", font, 384, 40, 1024, 1, r, 0, 1, 1);
        });
    };
    const Picture::Box tall = write(large, 1).ink();
    const Picture::Box low = write(small, 1).ink();
    EXPECT_NEAR((tall.bottom - tall.top) / 2, low.bottom - low.top, 3);
    EXPECT_GT(write(large, 1).count({255, 0, 255}), 100);
    EXPECT_GT(write(large, 0).count(blue), 100);
    EXPECT_EQ(write(large, 0).count({255, 0, 255}), 0);
}

// --- finding the file

// A folder that stands for the system's drive, with a file of a name among its fonts.
class FontFolder {
public:
    FontFolder(const std::string& name, const std::string& content) {
        const std::filesystem::path fonts = root / "Windows" / "Fonts";
        std::filesystem::create_directories(fonts);
        std::ofstream(fonts / name) << content;
        setenv("SystemDrive", root.c_str(), 1);
    }
    ~FontFolder() {
        unsetenv("SystemDrive");
        std::filesystem::remove_all(root);
    }

private:
    std::filesystem::path root = testing::TempDir() + "tarnwick-fonts-" + std::to_string(getpid());
};

static std::int32_t createFont(const std::string& name, std::string& printed) {
    testing::internal::CaptureStdout();
    const std::int32_t font = window->drawer().createFont(name, 30);
    printed = testing::internal::GetCapturedStdout();
    return font;
}

TEST(OpenGLFontFile, ThatIsMissingOrBrokenGivesNoFontAndALine) {
    std::string printed;
    EXPECT_EQ(createFont("missing.ttf", printed), 0);
    EXPECT_EQ(printed, "OpenGLFont: Could not find font: missing.ttf\n");
    EXPECT_EQ(createFont("", printed), 0);
    EXPECT_EQ(printed, "OpenGLFont: Could not find font: \n") << "a folder is no font";
    const FontFolder folder("broken.ttf", "not a font");
    EXPECT_EQ(createFont("broken.ttf", printed), 0);
    EXPECT_EQ(printed, "OpenGLFont: Could not load font: broken.ttf\n");
}

TEST(OpenGLFontFile, OfTheSystemComesBeforeTheGames) {
    std::string printed;
    {
        const FontFolder folder(fontName, "not a font");
        EXPECT_EQ(createFont(fontName, printed), 0);
        EXPECT_EQ(printed, "OpenGLFont: Could not load font: " + fontName + "\n");
    }
    {
        const FontFolder folder("another.ttf", "not a font");
        EXPECT_GT(createFont(fontName, printed), 0);
    }
    EXPECT_GT(createFont(fontName, printed), 0);
    EXPECT_EQ(printed, "");
}

TEST(Font, OfASizeThatNoTextureHoldsIsRefused) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(window->drawer().createFont("MarsNeedsCunnilingus.ttf", 4000), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "OpenGLFont: Could not load font: MarsNeedsCunnilingus.ttf\n");
}
