// SPDX-License-Identifier: Zlib
#include "game/LevelMap.h"

#include <unistd.h>

#include <climits>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "tests/support/DrawnGrid.h"
#include "tests/support/PngBytes.h"

static std::string codesOf(const LevelMap& map) {
    std::string codes;
    for (std::uint32_t row = 0; row < map.getHeight(); ++row) {
        for (std::uint32_t column = 0; column < map.getWidth(); ++column) {
            codes += static_cast<char>(map.at(static_cast<int>(column), static_cast<int>(row)));
        }
        codes += '\n';
    }
    return codes;
}

// Loads levels from a file and deletes it after the test.
class LevelMapFile : public testing::Test {
protected:
    LevelMap load(const Bytes& file) const {
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(file.data()),
                   static_cast<std::streamsize>(file.size()));
        return LevelMap(FilePath(path));
    }

    ~LevelMapFile() override { std::filesystem::remove(path); }

    const std::string path = testing::TempDir() + "LevelMapTest." + std::to_string(getpid());
};

TEST_F(LevelMapFile, ATileIsTheFirstByteOfItsPixelWithAlphaOrWithout) {
    const Bytes opaque = {'a', 1, 2, 'b', 3, 4, 'c', 5, 6, 'd', 0, 0, 'e', 255, 255, 'f', 7, 7};
    const Bytes clear = {'a', 9, 9, 0, 'b', 9, 9, 255, 'c', 9, 9, 1,
                         'd', 8, 8, 0, 'e', 8, 8, 128, 'f', 0, 0, 0};
    const LevelMap map = load(PngBytes::file(PngBytes::rgb, 3, opaque));
    EXPECT_EQ(map.getWidth(), 3u);
    EXPECT_EQ(map.getHeight(), 2u);
    EXPECT_EQ(codesOf(map), "abc\ndef\n");
    EXPECT_EQ(codesOf(load(PngBytes::file(PngBytes::rgba, 3, clear))), codesOf(map));
}

TEST(LevelMap, WhatLiesBeyondTheGridIsRock) {
    const LevelMap map = drawnGrid("..\n..\n..");
    for (const int beyond : {-1, 3, INT_MAX, INT_MIN}) {
        EXPECT_EQ(map.at(beyond, 1), LevelMap::outside);
        EXPECT_EQ(map.at(1, beyond), LevelMap::outside);
    }
    EXPECT_EQ(map.at(2, 2), LevelMap::outside);
    EXPECT_EQ(map.at(1, 2), LevelMap::empty);
    EXPECT_TRUE(map.contains(1, 2) && map.contains(0, 0));
}

TEST_F(LevelMapFile, APictureThatCannotBeUsedGivesTheEmptyGrid) {
    const LevelMap maps[] = {LevelMap(FilePath()), LevelMap(FilePath("/no/such/level.png")),
                             LevelMap(LoadedImage()), load({1, 2, 3}),
                             load(PngBytes::file(PngBytes::grey, 2, {0, 255, 255, 0}))};
    for (const LevelMap& map : maps) {
        EXPECT_EQ(map.getWidth(), 0u);
        EXPECT_EQ(map.getHeight(), 0u);
        EXPECT_EQ(map.at(0, 0), LevelMap::outside);
    }
}
