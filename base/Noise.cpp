// SPDX-License-Identifier: Zlib
#include "base/Noise.h"

#include "platform/Platform.h"

// Integer noise: a cubic polynomial in 32-bit arithmetic that wraps, known from lattice noise.
static constexpr std::uint32_t cubicFactor = 15731;
static constexpr std::uint32_t linearFactor = 789221;
static constexpr std::uint32_t offset = 771171059;
static constexpr std::uint32_t positiveBits = 0x7FFFFFFF;
static constexpr double hashToTwo = 9.313225746154785e-10; // 2^-30

float noiseUnit() {
    SharedValue<std::uint32_t>& seed = noiseSeed();
    const std::uint32_t n = seed + 1;
    seed = n;
    const std::uint32_t m = n ^ (n << 13);
    const std::uint32_t hash = (m * (m * m * cubicFactor + linearFactor) - offset) & positiveBits;
    const float balanced = static_cast<float>(1.0 - hash * hashToTwo); // -1 to 1
    return static_cast<float>((balanced + 1.0) * 0.5);
}

int noiseRange(int n) {
    // In double: with float arithmetic the result for an n of 257 or more could be n itself.
    return static_cast<int>(noiseUnit() * (n - 0.00001));
}

SharedValue<std::uint32_t>& noiseSeed() {
    static SharedValue<std::uint32_t> seed(static_cast<std::uint32_t>(Platform::calendarSeconds()));
    return seed;
}
