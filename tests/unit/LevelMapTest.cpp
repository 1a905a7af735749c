// SPDX-License-Identifier: Zlib
#include "game/LevelMap.h"

#include <climits>

#include <gtest/gtest.h>

#include "tests/support/DrawnGrid.h"

TEST(LevelMap, WhatLiesBeyondTheGridIsRock) {
    const LevelMap map = drawnGrid("ab\nc.\n..");
    for (const int beyond : {-1, 3, INT_MAX, INT_MIN}) {
        EXPECT_EQ(map.at(beyond, 1), LevelMap::outside);
        EXPECT_EQ(map.at(1, beyond), LevelMap::outside);
    }
    EXPECT_EQ(map.at(2, 2), LevelMap::outside);
    EXPECT_EQ(map.at(1, 2), LevelMap::empty);
    EXPECT_EQ(map.at(1, 0), 'b');
    EXPECT_EQ(map.at(0, 1), 'c');
    EXPECT_TRUE(map.contains(1, 2) && map.contains(0, 0));
}

TEST(LevelMap, APictureThatCannotBeUsedGivesTheEmptyGrid) {
    for (const LevelMap& map :
         {LevelMap(FilePath("/no/such/level.png")), LevelMap(LoadedImage())}) {
        EXPECT_EQ(map.getWidth(), 0u);
        EXPECT_EQ(map.getHeight(), 0u);
        EXPECT_EQ(map.at(0, 0), LevelMap::outside);
    }
}
