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
    EXPECT_EQ(decode(iconImage).width, 32u);
    for (const EmbeddedImage& entry : glyphImages) EXPECT_EQ(decode(entry).width, 64u);
}

// The tile renderer leaves out what rock hides and what the clear cell would draw.
TEST(EmbeddedImages, RockCellsHideWhatIsBehindAndTheEmptyCellIsClear) {
    const LoadedImage tiles = decode(spriteImages[spriteTiles]);
    EXPECT_EQ(countPixels(tiles, 0, 0, 6 * 16, 16, 255), 6 * 256);
    EXPECT_EQ(countPixels(tiles, 7 * 16, 7 * 16, 16, 16, 1), 0);
    const LoadedImage outline = decode(spriteImages[spriteOutline]); // two pixels wide
    EXPECT_EQ(countPixels(outline, 2, 2, 32, 32, 1), 0);
}
