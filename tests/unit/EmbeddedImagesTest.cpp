// SPDX-License-Identifier: Zlib
// What the game relies on in its pictures. That each sign has its own is ApplicationTest's.
#include "images/EmbeddedImages.h"

#include <map>
#include <string>

#include <gtest/gtest.h>

#include "drawing/ImageLoader.h"

static LoadedImage decode(const EmbeddedImage& entry) {
    return ImageLoader().loadFromMemory(entry.data, entry.bytes);
}

// Red, green, blue and alpha.
static const std::uint8_t* pixelAt(const LoadedImage& picture, int x, int y) {
    return &picture.pixels[(static_cast<std::size_t>(y) * picture.width +
                            static_cast<std::size_t>(x)) *
                           4];
}

// How many pixels of a rectangle, which lies in the picture, have an alpha of at least this.
static int countOpaque(const LoadedImage& picture, int left, int top, int width, int height,
                       int alpha = 255) {
    int count = 0;
    for (int y = top; y < top + height; ++y) {
        for (int x = left; x < left + width; ++x) count += pixelAt(picture, x, y)[3] >= alpha;
    }
    return count;
}

static bool isWhiteWhereSeen(const LoadedImage& picture) {
    for (std::uint32_t i = 0; i < picture.width * picture.height; ++i) {
        const std::uint8_t* pixel = &picture.pixels[4 * i];
        if (pixel[3] != 0 && (pixel[0] & pixel[1] & pixel[2]) != 255) return false;
    }
    return true;
}

TEST(EmbeddedImages, EveryEntryIsAPngOfItsSizeWithAnAlphaAndTheSkyAnOpaqueJpeg) {
    using Size = std::pair<int, int>;
    const std::map<int, Size> others = {
        // the rest are the runner's
        {spriteCloud, {132, 68}},  {spriteSky, {1024, 1024}}, {spriteStar, {16, 16}},
        {spriteOutline, {36, 36}}, {spriteTiles, {128, 128}}, {spriteLogo, {1024, 720}},
        {spriteRing, {8, 8}},      {spriteRing + 1, {8, 8}},  {spriteRing + 2, {8, 8}},
        {spriteRing + 3, {8, 8}},  {spriteLine, {8, 8}}};
    for (int i = 0; i < spriteImageCount; ++i) {
        const LoadedImage sprite = decode(spriteImages[i]);
        const Size size = others.count(i) ? others.at(i) : Size(32, 32);
        ASSERT_EQ(Size(sprite.width, sprite.height), size) << i;
        const int opaque = countOpaque(sprite, 0, 0, size.first, size.second);
        EXPECT_EQ(opaque == size.first * size.second, i == spriteSky) << i;
        EXPECT_GE(countOpaque(sprite, 0, 0, size.first, size.second, 64), 4) << i;
        const bool isPng = spriteImages[i].data[0] == 0x89 && spriteImages[i].data[1] == 'P';
        EXPECT_EQ(isPng, i != spriteSky) << i;
    }
    const LoadedImage icon = decode(iconImage);
    ASSERT_EQ(Size(icon.width, icon.height), Size(32, 32));
    EXPECT_EQ(pixelAt(icon, 0, 0)[3], 0); // a window manager shows what is behind its corners
    EXPECT_EQ(pixelAt(icon, 16, 26)[3], 255);
}

// The tile renderer leaves out what rock hides and what the clear cell would draw.
TEST(EmbeddedImages, RockCellsHideWhatIsBehindAndTheEmptyCellIsClear) {
    const LoadedImage tiles = decode(spriteImages[spriteTiles]);
    EXPECT_EQ(countOpaque(tiles, 0, 0, 6 * 16, 16), 6 * 256);
    for (int flame = 0; flame < 3; ++flame) {
        const int seen = countOpaque(tiles, flame * 16, 7 * 16, 16, 16, 1);
        EXPECT_GT(seen, 40) << flame;
        EXPECT_LT(seen, 256) << flame;
    }
    EXPECT_EQ(countOpaque(tiles, 7 * 16, 7 * 16, 16, 16, 1), 0);

    const LoadedImage outline = decode(spriteImages[spriteOutline]); // two pixels wide
    EXPECT_EQ(countOpaque(outline, 2, 2, 32, 32, 1), 0);
    EXPECT_EQ(countOpaque(outline, 0, 0, 36, 36), 36 * 36 - 32 * 32);
    EXPECT_EQ(pixelAt(outline, 0, 0)[0] | pixelAt(outline, 35, 35)[1], 0) << "black";
}

TEST(EmbeddedImages, ThePicturesThatAreTintedAreWhite) {
    for (const EmbeddedImage& entry : glyphImages) {
        const LoadedImage glyph = decode(entry);
        EXPECT_TRUE(glyph.width == 64 && glyph.height == 64 && isWhiteWhereSeen(glyph))
            << &entry - glyphImages;
    }
    for (const int entry : {spriteStar + 0, spriteLine + 0, spriteRing + 0, spriteRing + 1,
                            spriteRing + 2, spriteRing + 3}) {
        EXPECT_TRUE(isWhiteWhereSeen(decode(spriteImages[entry]))) << entry;
    }
    for (int ring = 0; ring < 4; ++ring) { // of diameter 8, 6, 4, 2
        const LoadedImage picture = decode(spriteImages[spriteRing + ring]);
        const int all = countOpaque(picture, 0, 0, 8, 8, 1);
        EXPECT_GT(countOpaque(picture, ring, 3, 1, 2, 1), 0) << ring;
        EXPECT_EQ(countOpaque(picture, ring, ring, 8 - 2 * ring, 8 - 2 * ring, 1), all) << ring;
    }
}
