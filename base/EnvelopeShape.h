// SPDX-License-Identifier: Zlib
#pragma once

// The curve of all fades: it maps 0 to 0 and 1 to 1; the bend decides the path between.
inline constexpr float lateRise = -9.0f;         // starts slowly and rises late
inline constexpr float earlyRise = -0.33333337f; // rises at once and flattens; not -1/3 exactly

constexpr float envelopeShape(float x, float bend) {
    return x / ((x - 1) * bend + x);
}
