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
    noiseSeed() = 0xFFFFFFFF; // the counter wraps
    double sum = 0;           // exact, so it shows each rounding
    for (int i = 0; i <= 10000; ++i) sum += noiseUnit();
    EXPECT_EQ(sum, 4990.97230091691);
    EXPECT_EQ(noiseSeed(), 10000u);
    for (const int n : {1, 8, 256, 257, 65536, 0x7FFFFFFF}) {
        noiseSeed() = 5750294; // the next number is exactly 1
        EXPECT_EQ(noiseRange(n), n - 1);
        noiseSeed() = 2676097; // the next number is exactly 0
        EXPECT_EQ(noiseRange(n), 0);
    }
}
