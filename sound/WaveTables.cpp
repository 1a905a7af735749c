// SPDX-License-Identifier: Zlib
#include "sound/WaveTables.h"

#include <cmath>

static constexpr float turn = 6.2831850f; // 2 pi, but not the nearest float; it sets the bits

// The highest frequency of each row but the last, in hertz.
static constexpr float rowLimits[] = {440, 660, 880, 1100, 1320, 1540};

// Adds the sines of the harmonics 1, 1 + step, 1 + 2 step, ... below end.
static void addHarmonics(WaveTables::Row& row, int end, int step) {
    for (int h = 1; h < end; h += step) {
        const auto harmonic = static_cast<float>(h);
        const float level = 1.0f / harmonic;
        for (std::size_t n = 0; n < row.size(); ++n) {
            const float place = static_cast<float>(n) / WaveTables::length;
            const float angle = harmonic * place * turn;
            // The double sine, rounded to float, is the same in every C library; sinf is not.
            const auto sine = static_cast<float>(std::sin(static_cast<double>(angle)));
            row[n] += sine * level * 0.5f;
        }
    }
}

WaveTables::WaveTables() {
    int end = 128; // the first row's saw has the harmonics below
    for (std::size_t i = 0; i < sawRows; ++i, end /= 2) {
        addHarmonics(rows[i], end, 1);
        addHarmonics(rows[sawRows + i], 2 * end, 2);
    }
    pairRows();
}

void WaveTables::pairRows() {
    for (std::size_t i = 0; i < sawRows; ++i) {
        const Row& saw = rows[i];
        const Row& square = rows[sawRows + i];
        for (std::size_t n = 0; n < length; ++n) {
            const std::size_t next = (n + 1) % length;
            pairedRows[i * length + n] = {saw[n], saw[next], square[n], square[next]};
        }
    }
}

const WaveTables& WaveTables::instance() {
    static const WaveTables tables;
    return tables;
}

std::size_t WaveTables::rowIndex(float frequency) {
    std::size_t index = 0;
    for (const float limit : rowLimits) {
        if (!(frequency > limit)) break;
        ++index;
    }
    return index;
}
