// SPDX-License-Identifier: Zlib
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

// The only tanh used by the sound. It gives the same bits with every compiler, optimisation level
// and processor: it uses only single-precision sums, products, one division and integer operations
// on the exponent. The absolute error is below 1e-7; NaN gives NaN.
//
// tanh |x| = m / (m + 2) with m = exp(2 |x|) - 1 = 2^n (exp(r) - 1) + (2^n - 1), where n is the
// integer nearest to 2 |x| / ln 2, and r = 2 |x| - n ln 2 is at most ln 2 / 2 in size.
struct TanhConstants {
    static constexpr float largest = 9.5f; // beyond it tanh rounds to 1
    static constexpr float log2e = 1.44269504f;
    static constexpr float ln2High = 0.693359375f; // 9 bits, so that n * ln2High is exact
    static constexpr float ln2Low = -2.12194440e-4f;
    static constexpr float rounder = 12582912.0f; // 1.5 * 2^23: adding it rounds to an integer
    // Taylor coefficients: exp(r) - 1 = r + r^2 (1/2 + r/6 + r^2/24 + ...)
    static constexpr float c2 = 0.5f;
    static constexpr float c3 = 1.0f / 6;
    static constexpr float c4 = 1.0f / 24;
    static constexpr float c5 = 1.0f / 120;
    static constexpr float c6 = 1.0f / 720;
    static constexpr float c7 = 1.0f / 5040;
};

inline float hyperbolicTangent(float x) {
    using C = TanhConstants;
    const float size = std::fabs(x);
    const float y = 2 * (size > C::largest ? C::largest : size); // NaN stays NaN
    const float shifted = y * C::log2e + C::rounder;
    const float n = shifted - C::rounder;
    const float r = (y - n * C::ln2High) - n * C::ln2Low;
    const float tail = C::c2 + r * (C::c3 + r * (C::c4 + r * (C::c5 + r * (C::c6 + r * C::c7))));
    const float expm1OfRest = r + r * r * tail;
    // The low bits of `shifted` are n; moved into the exponent they make 2^n.
    const auto power = (std::bit_cast<std::uint32_t>(shifted) + 127) << 23;
    const float scale = std::bit_cast<float>(power);
    const float m = scale * expm1OfRest + (scale - 1);
    return std::copysign(m / (m + 2), x);
}
