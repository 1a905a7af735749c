// SPDX-License-Identifier: Zlib
#include "drawing/PowerOfTwo.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

TEST(PowerOfTwo, TheNextPowerIsTheSmallestThatIsNotBelow) {
    const std::pair<std::uint32_t, std::uint32_t> cases[] = {{0, 1},
                                                             {1, 1},
                                                             {2, 2},
                                                             {3, 4},
                                                             {4, 4},
                                                             {5, 8},
                                                             {68, 128},
                                                             {132, 256},
                                                             {720, 1024},
                                                             {1024, 1024},
                                                             {1025, 2048},
                                                             {65535, 65536},
                                                             {65536, 65536},
                                                             {65537, 131072},
                                                             {(1u << 30) + 1, 1u << 31},
                                                             {1u << 31, 1u << 31}};
    for (const auto& [n, next] : cases) {
        EXPECT_EQ(nextPowerOfTwo(n), next) << n;
        EXPECT_EQ(isPowerOfTwo(n), n == next) << n;
    }
}

TEST(PowerOfTwo, PaddingRepeatsTheAlphaOfARowsEndAndTheLastRow) {
    // 3 by 2 pixels, the bytes counted through; the alpha at the rows' ends are 12 and 24.
    PixelBuffer picture = std::make_unique<std::uint8_t[]>(24);
    for (std::uint8_t i = 0; i < 24; ++i) picture[i] = static_cast<std::uint8_t>(i + 1);
    const PixelBuffer padded = padRows(picture, 3, 2, 4, 4);
    const std::vector<std::uint8_t> first = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 12, 12, 12, 12};
    const std::vector<std::uint8_t> last = {13, 14, 15, 16, 17, 18, 19, 20,
                                            21, 22, 23, 24, 24, 24, 24, 24};
    const auto row = [&](int y) {
        return std::vector<std::uint8_t>(&padded[static_cast<std::size_t>(16 * y)],
                                         &padded[static_cast<std::size_t>(16 * y)] + 16);
    };
    EXPECT_EQ(row(0), first);
    EXPECT_EQ(row(1), last);
    EXPECT_EQ(row(2), std::vector<std::uint8_t>(16));
    EXPECT_EQ(row(3), std::vector<std::uint8_t>(16));

    repeatLastRow(padded, 2, 4, 4);
    EXPECT_EQ(row(0), first);
    for (int y = 1; y < 4; ++y) EXPECT_EQ(row(y), last) << y;
}

TEST(PowerOfTwo, ASideThatNeedsNoPaddingStaysAsItIs) {
    PixelBuffer column = std::make_unique<std::uint8_t[]>(12); // 1 by 3
    for (std::uint8_t i = 0; i < 12; ++i) column[i] = i;
    const PixelBuffer padded = padRows(column, 1, 3, 1, 4);
    repeatLastRow(padded, 3, 1, 4);
    EXPECT_TRUE(std::equal(&column[0], &column[0] + 12, &padded[0]));
    EXPECT_TRUE(std::equal(&column[8], &column[8] + 4, &padded[12]));
}
