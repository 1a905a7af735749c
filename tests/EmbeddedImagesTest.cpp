// SPDX-License-Identifier: Zlib
#include "images/EmbeddedImages.h"

#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "drawing/ImageLoader.h"

class EmbeddedImages : public testing::Test {
protected:
    struct Pixel {
        int red, green, blue, alpha;
        bool operator==(const Pixel&) const = default;
    };

    // A decoded entry. Asking for a pixel beyond its sides fails the test.
    struct Picture {
        LoadedImage image;

        int width() const { return static_cast<int>(image.width); }
        int height() const { return static_cast<int>(image.height); }

        Pixel at(int x, int y) const {
            const bool inside = x >= 0 && x < width() && y >= 0 && y < height();
            EXPECT_TRUE(inside) << x << ", " << y;
            if (!inside) return {-1, -1, -1, -1};
            const std::uint8_t* p = image.pixels.get() + 4 * (y * width() + x);
            return {p[0], p[1], p[2], p[3]};
        }
    };

    static Picture decode(const EmbeddedImage& entry) {
        return {ImageLoader().loadFromMemory(entry.data, entry.bytes)};
    }

    // How many pixels of a rectangle have an alpha of at least this.
    static int countOpaque(const Picture& picture, int x0, int y0, int width, int height,
                           int alpha = 255) {
        int count = 0;
        for (int y = y0; y < y0 + height; ++y) {
            for (int x = x0; x < x0 + width; ++x) count += picture.at(x, y).alpha >= alpha;
        }
        return count;
    }

    static bool isWhiteWhereSeen(const Picture& picture) {
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const Pixel p = picture.at(x, y);
                if (p.alpha != 0 && p != Pixel{255, 255, 255, p.alpha}) return false;
            }
        }
        return true;
    }

    // Takes all pixels that hang together with one, over sides and corners, out of a mask.
    static void erase(std::vector<std::string>& mask, int x, int y) {
        const char kind = mask[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
        std::vector<std::pair<int, int>> open = {{x, y}};
        while (!open.empty()) {
            const auto [column, row] = open.back();
            open.pop_back();
            if (row < 0 || row >= static_cast<int>(mask.size()) || column < 0 ||
                column >= static_cast<int>(mask[0].size())) {
                continue;
            }
            char& cell = mask[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
            if (cell != kind) continue;
            cell = ' ';
            open.insert(
                open.end(),
                {{column - 1, row}, {column + 1, row}, {column, row - 1}, {column, row + 1}});
        }
    }

    // The number of connected areas of ink, and of areas of ground that ink closes in.
    static std::pair<int, int> piecesAndHoles(const Picture& picture) {
        std::vector<std::string> mask(static_cast<std::size_t>(picture.height()));
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                mask[static_cast<std::size_t>(y)] += picture.at(x, y).alpha >= 128 ? '#' : '.';
            }
        }
        int pieces = 0, grounds = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const char cell = mask[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
                if (cell == ' ') continue;
                (cell == '#' ? pieces : grounds) += 1;
                erase(mask, x, y);
            }
        }
        return {pieces, grounds - 1};
    }
};

TEST_F(EmbeddedImages, EveryEntryDecodesToItsSize) {
    for (const EmbeddedImage& entry : glyphImages) {
        const Picture glyph = decode(entry);
        EXPECT_EQ(glyph.width(), 64) << &entry - glyphImages;
        EXPECT_EQ(glyph.height(), 64) << &entry - glyphImages;
    }
    std::array<std::pair<int, int>, spriteImageCount> sizes;
    sizes.fill({32, 32}); // the runner's
    sizes[spriteCloud] = {132, 68};
    sizes[spriteSky] = {1024, 1024};
    for (std::size_t ring = 0; ring < 4; ++ring) sizes[spriteRing + ring] = {8, 8};
    sizes[spriteStar] = {16, 16};
    sizes[spriteOutline] = {36, 36};
    sizes[spriteTiles] = {128, 128};
    sizes[spriteLogo] = {1024, 720};
    sizes[spriteLine] = {8, 8};
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const Picture sprite = decode(spriteImages[i]);
        EXPECT_EQ(std::pair(sprite.width(), sprite.height()), sizes[i]) << i;
    }
    const Picture icon = decode(iconImage);
    EXPECT_EQ(std::pair(icon.width(), icon.height()), std::pair(32, 32));
    EXPECT_EQ(icon.at(0, 0).alpha, 0); // a window manager shows what is behind its corners
    EXPECT_EQ(icon.at(16, 26).alpha, 255);
}

TEST_F(EmbeddedImages, TheSkyIsAnOpaqueJpegAndTheRestArePngsWithAnAlpha) {
    for (int i = 0; i < spriteImageCount; ++i) {
        const Picture sprite = decode(spriteImages[i]);
        const int area = sprite.width() * sprite.height();
        const int opaque = countOpaque(sprite, 0, 0, sprite.width(), sprite.height());
        const bool isPng = spriteImages[i].data[0] == 0x89 && spriteImages[i].data[1] == 'P';
        EXPECT_EQ(isPng, i != spriteSky) << i;
        EXPECT_EQ(opaque == area, i == spriteSky) << i;
        const int seen = countOpaque(sprite, 0, 0, sprite.width(), sprite.height(), 64);
        EXPECT_GE(seen, 4) << i;
    }
}

TEST_F(EmbeddedImages, TheOutlineIsABlackFrameTwoPixelsWide) {
    const Picture outline = decode(spriteImages[spriteOutline]);
    for (int y = 0; y < 36; ++y) {
        for (int x = 0; x < 36; ++x) {
            const bool inFrame = x < 2 || x >= 34 || y < 2 || y >= 34;
            if (inFrame) {
                EXPECT_EQ(outline.at(x, y), (Pixel{0, 0, 0, 255})) << x << ", " << y;
            } else {
                EXPECT_EQ(outline.at(x, y).alpha, 0) << x << ", " << y;
            }
        }
    }
}

// The tile renderer leaves out what rock hides and what the clear cell would draw.
TEST_F(EmbeddedImages, RockCellsHideWhatIsBehindAndTheEmptyCellIsClear) {
    const Picture tiles = decode(spriteImages[spriteTiles]);
    for (int look = 0; look < 6; ++look) {
        EXPECT_EQ(countOpaque(tiles, look * 16, 0, 16, 16), 256) << look;
    }
    for (int flame = 0; flame < 3; ++flame) {
        const int seen = countOpaque(tiles, flame * 16, 7 * 16, 16, 16, 1);
        EXPECT_GT(seen, 40) << flame;
        EXPECT_LT(seen, 256) << flame;
    }
    EXPECT_EQ(countOpaque(tiles, 7 * 16, 7 * 16, 16, 16, 1), 0);
}

TEST_F(EmbeddedImages, ThePicturesThatAreTintedAreWhite) {
    for (const EmbeddedImage& entry : glyphImages) {
        EXPECT_TRUE(isWhiteWhereSeen(decode(entry))) << &entry - glyphImages;
    }
    for (const int entry : {spriteStar + 0, spriteLine + 0, spriteRing + 0, spriteRing + 1,
                            spriteRing + 2, spriteRing + 3}) {
        EXPECT_TRUE(isWhiteWhereSeen(decode(spriteImages[entry]))) << entry;
    }
    const Picture line = decode(spriteImages[spriteLine]);
    const int alphas[8] = {2, 33, 192, 255, 255, 192, 33, 2};
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 8; ++x) EXPECT_EQ(line.at(x, y).alpha, alphas[x]);
    }
    for (int ring = 0; ring < 4; ++ring) { // of diameter 8, 6, 4, 2
        const Picture picture = decode(spriteImages[spriteRing + ring]);
        const int all = countOpaque(picture, 0, 0, 8, 8, 1);
        EXPECT_GT(countOpaque(picture, ring, 3, 1, 2, 1), 0) << ring;
        EXPECT_EQ(countOpaque(picture, ring, ring, 8 - 2 * ring, 8 - 2 * ring, 1), all) << ring;
    }
}

// A sign in the wrong place shows itself by the pieces and holes it is made of.
TEST_F(EmbeddedImages, TheSignsStandInTheTablesOrder) {
    const std::string order = "0123456789ABC:,DE!FGHIJKLM-NOP.+Q?RSTUVWXYZ";
    ASSERT_EQ(order.size(), std::size_t{glyphImageCount});
    for (std::size_t i = 0; i < order.size(); ++i) {
        const Picture sign = decode(glyphImages[i]);
        const bool twoPieces = std::string(":!?").find(order[i]) != std::string::npos;
        const bool oneHole = std::string("0469ADOPQR").find(order[i]) != std::string::npos;
        const bool twoHoles = std::string("8B").find(order[i]) != std::string::npos;
        EXPECT_EQ(piecesAndHoles(sign), std::pair(twoPieces ? 2 : 1, twoHoles  ? 2
                                                                     : oneHole ? 1
                                                                               : 0))
            << order[i];
        const bool isSmall = std::string(":,-.").find(order[i]) != std::string::npos;
        EXPECT_EQ(countOpaque(sign, 0, 0, 64, 64, 128) < 230, isSmall) << order[i];
    }
}
