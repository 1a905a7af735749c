// SPDX-License-Identifier: Zlib
// What the game relies on in its pictures. ApplicationTest checks that each glyph has its own.
#include "images/EmbeddedImages.h"

#include <map>

#include <gtest/gtest.h>

#include "drawing/ImageLoader.h"

static LoadedImage decode(const EmbeddedImage& entry) {
    return ImageLoader().loadFromMemory(entry.data, entry.bytes);
}

// How many pixels of a rectangle in the picture have an alpha of 1 or more, or of 255.
static int countPixels(const LoadedImage& picture, int left, int top, int width, int height,
                       int leastAlpha) {
    int count = 0;
    for (int y = top; y < top + height; ++y) {
        for (int x = left; x < left + width; ++x) {
            const auto place =
                static_cast<std::size_t>(y) * picture.width + static_cast<std::size_t>(x);
            count += picture.pixels[place * 4 + 3] >= leastAlpha;
        }
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

TEST(EmbeddedImages, HaveTheirSizes) {
    using Size = std::pair<std::uint32_t, std::uint32_t>;
    const std::map<int, Size> others = {
        {spriteCloud, {132, 68}},  {spriteSky, {1024, 1024}}, {spriteStar, {16, 16}},
        {spriteOutline, {36, 36}}, {spriteTiles, {128, 128}}, {spriteLogo, {1024, 720}},
        {spriteRing, {8, 8}},      {spriteRing + 1, {8, 8}},  {spriteRing + 2, {8, 8}},
        {spriteRing + 3, {8, 8}},  {spriteLine, {8, 8}}};
    for (int i = 0; i < spriteImageCount; ++i) {
        const LoadedImage sprite = decode(spriteImages[i]);
        const Size size = others.count(i) ? others.at(i) : Size(32, 32); // of the runner
        EXPECT_EQ(Size(sprite.width, sprite.height), size) << i;
    }
    const LoadedImage icon = decode(iconImage);
    EXPECT_EQ(Size(icon.width, icon.height), Size(32, 32));
    for (const EmbeddedImage& entry : glyphImages) {
        const LoadedImage glyph = decode(entry);
        EXPECT_EQ(Size(glyph.width, glyph.height), Size(64, 64)) << &entry - glyphImages;
        EXPECT_TRUE(isWhiteWhereSeen(glyph)) << "it is tinted";
    }
}

// The tile renderer leaves out what rock hides and what the clear cell would draw.
TEST(EmbeddedImages, RockCellsHideWhatIsBehindAndTheEmptyCellIsClear) {
    const LoadedImage tiles = decode(spriteImages[spriteTiles]);
    EXPECT_EQ(countPixels(tiles, 0, 0, 6 * 16, 16, 255), 6 * 256);
    EXPECT_EQ(countPixels(tiles, 7 * 16, 7 * 16, 16, 16, 1), 0);
    const LoadedImage outline = decode(spriteImages[spriteOutline]); // two pixels wide
    EXPECT_EQ(countPixels(outline, 2, 2, 32, 32, 1), 0);
}

// The vortex joins its rings into one picture, tinted, without blending.
TEST(EmbeddedImages, RingsAreWhiteAndOpaqueOrClear) {
    for (int ring = 0; ring < 4; ++ring) { // of diameter 8, 6, 4, 2
        const LoadedImage picture = decode(spriteImages[spriteRing + ring]);
        EXPECT_TRUE(isWhiteWhereSeen(picture)) << ring;
        const int seen = countPixels(picture, 0, 0, 8, 8, 1);
        EXPECT_EQ(countPixels(picture, 0, 0, 8, 8, 255), seen);
        EXPECT_EQ(countPixels(picture, ring, ring, 8 - 2 * ring, 8 - 2 * ring, 1), seen) << ring;
        EXPECT_GT(countPixels(picture, ring, 3, 1, 2, 1), 0) << ring;
    }
}
