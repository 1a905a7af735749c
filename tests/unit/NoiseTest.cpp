// SPDX-License-Identifier: Zlib
#include "base/Noise.h"

#include <thread>

#include <gtest/gtest.h>

#include "platform/Platform.h"

// Taken before any test stores a seed of its own.
static const std::uint32_t firstSeed = noiseSeed();

// Counters whose next draw is exactly 1 and exactly 0: the hash lies within rounding of its ends.
static constexpr std::uint32_t seedBeforeOne = 5750294;
static constexpr std::uint32_t seedBeforeZero = 2676097;

TEST(Noise, EachRunStartsFromTheCalendar) {
    const auto now = static_cast<std::uint32_t>(Platform::calendarSeconds());
    EXPECT_LT(now - firstSeed, 600u);
}

TEST(Noise, TheFirstNumbersFromSeedZero) {
    noiseSeed() = 0;
    for (const float expected : {0.38681346f, 0.64681643f, 0.37140739f, 0.79288036f}) {
        EXPECT_EQ(noiseUnit(), expected);
    }
    EXPECT_EQ(noiseSeed(), 4u);
    noiseSeed() = 0;
    for (const int expected : {3, 5, 2, 6}) EXPECT_EQ(noiseRange(8), expected);
    // Exact in double, so that not one of them may round another way.
    noiseSeed() = 0;
    double sum = 0;
    for (int i = 0; i < 10000; ++i) sum += noiseUnit();
    EXPECT_EQ(sum, 4990.613196402788);
}

TEST(Noise, TheCounterWraps) {
    noiseSeed() = 0xFFFFFFFE;
    const float last = noiseUnit(), zeroth = noiseUnit(), first = noiseUnit();
    EXPECT_EQ(noiseSeed(), 1u);
    EXPECT_EQ(first, 0.38681346f);
    EXPECT_EQ(last, 0.950063109f);
    EXPECT_EQ(zeroth, 0.359104514f);
}

TEST(Noise, TheEndsOfTheRangeStayInside) {
    noiseSeed() = seedBeforeOne;
    ASSERT_EQ(noiseUnit(), 1.0f);
    // The largest n that takes away 0.00001 in vain in float arithmetic is 2^31 - 1.
    for (const int n : {1, 2, 8, 256, 257, 258, 1000, 65536, 0x7FFFFFFF}) {
        noiseSeed() = seedBeforeOne;
        EXPECT_EQ(noiseRange(n), n - 1);
        noiseSeed() = seedBeforeZero;
        EXPECT_EQ(noiseRange(n), 0);
    }
    noiseSeed() = seedBeforeOne;
    EXPECT_EQ(noiseRange(0), 0);
}

TEST(Noise, TwoThreadsMayDrawAtOnce) {
    noiseSeed() = 0;
    constexpr int draws = 100000;
    const auto draw = [](int& outside) {
        for (int i = 0; i < draws; ++i) {
            const float unit = noiseUnit();
            if (!(unit >= 0 && unit <= 1)) ++outside;
        }
    };
    int outsideHere = 0, outsideThere = 0;
    std::thread other([&] { draw(outsideThere); });
    draw(outsideHere);
    other.join();
    EXPECT_EQ(outsideHere + outsideThere, 0);
    // Draws at the same moment repeat a number; they are never counted more than once each.
    EXPECT_GE(noiseSeed(), 1u);
    EXPECT_LE(noiseSeed(), 2u * draws);
}
