// SPDX-License-Identifier: Zlib
#include "base/Noise.h"

#include <gtest/gtest.h>

#include "platform/Platform.h"

// Read before any test sets the seed.
static const std::uint32_t firstSeed = noiseSeed();

TEST(Noise, EachRunStartsFromTheCurrentTime) {
    const auto now = static_cast<std::uint32_t>(Platform::calendarSeconds());
    EXPECT_LT(now - firstSeed, 600u);
}

TEST(Noise, ASeedGivesTheSameNumbersEverywhere) {
    noiseSeed() = 0;
    for (const float expected : {0.38681346f, 0.64681643f}) EXPECT_EQ(noiseUnit(), expected);
    noiseSeed() = 0;
    for (const int expected : {3, 5, 2, 6}) EXPECT_EQ(noiseRange(8), expected);
    noiseSeed() = 0xFFFFFFFF; // the counter wraps
    double sum = 0;           // exact, so it shows each rounding
    for (int i = 0; i <= 10000; ++i) sum += noiseUnit();
    EXPECT_EQ(sum, 4990.97230091691);
    EXPECT_EQ(noiseSeed(), 10000u);
}

TEST(Noise, TheExtremesStayInRange) {
    constexpr std::uint32_t seedBeforeOne = 5750294;  // the next number is exactly 1
    constexpr std::uint32_t seedBeforeZero = 2676097; // the next number is exactly 0
    for (const int n : {1, 8, 256, 257, 65536, 0x7FFFFFFF}) {
        noiseSeed() = seedBeforeOne;
        EXPECT_EQ(noiseRange(n), n - 1);
        noiseSeed() = seedBeforeZero;
        EXPECT_EQ(noiseRange(n), 0);
    }
    noiseSeed() = seedBeforeOne;
    EXPECT_EQ(noiseRange(0), 0);
}
