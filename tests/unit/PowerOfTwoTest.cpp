// SPDX-License-Identifier: Zlib
#include "drawing/PowerOfTwo.h"

#include <numeric>
#include <vector>

#include <gtest/gtest.h>

TEST(PowerOfTwo, TheNextPowerIsTheSmallestThatIsNotBelow) {
    using Case = std::pair<std::uint32_t, std::uint32_t>;
    for (const auto& [n, next] :
         {Case{0, 1}, Case{1, 1}, Case{2, 2}, Case{3, 4}, Case{4, 4}, Case{5, 8}, Case{720, 1024},
          Case{65535, 65536}, Case{65537, 131072}, Case{(1u << 30) + 1, 1u << 31},
          Case{1u << 31, 1u << 31}}) {
        EXPECT_EQ(nextPowerOfTwo(n), next) << n;
        EXPECT_EQ(isPowerOfTwo(n), n == next) << n;
    }
}

TEST(PowerOfTwo, PaddingRepeatsTheAlphaOfARowsEndAndTheLastRow) {
    using Bytes = std::vector<int>;
    PixelBuffer picture = std::make_unique<std::uint8_t[]>(16); // 2 by 2, the bytes counted through
    std::iota(&picture[0], &picture[16], std::uint8_t{1});
    const PixelBuffer padded = padRows(picture, 2, 2, 4, 4);
    const auto row = [&](int y) { return Bytes(&padded[16 * y], &padded[16 * y] + 16); };
    const Bytes first = {1, 2, 3, 4, 5, 6, 7, 8, 8, 8, 8, 8, 8, 8, 8, 8};
    const Bytes last = {9, 10, 11, 12, 13, 14, 15, 16, 16, 16, 16, 16, 16, 16, 16, 16};
    EXPECT_EQ(row(0), first);
    EXPECT_EQ(row(1), last);
    for (const int y : {2, 3}) EXPECT_EQ(row(y), Bytes(16)) << y;
    repeatLastRow(padded, 2, 4, 4);
    EXPECT_EQ(row(0), first);
    for (const int y : {1, 2, 3}) EXPECT_EQ(row(y), last) << y;
}
