// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstdint>

// One cycle each of seven saws and seven squares with fewer and fewer harmonics, for higher and
// higher notes. There is one for the whole program; its first use, on the main thread, builds it in
// a few milliseconds, and from then on it is only read.
class WaveTables {
public:
    static constexpr std::int32_t length = 1024; // entries a row
    using Row = std::array<float, length>;

    static const WaveTables& instance();

    // The row for a note of that many hertz: below each limit and on it, the row of the limit.
    const Row& sawRow(float frequency) const { return rows[rowIndex(frequency)]; }
    const Row& squareRow(float frequency) const { return rows[sawRows + rowIndex(frequency)]; }

private:
    static constexpr std::size_t sawRows = 7;

    WaveTables();

    static std::size_t rowIndex(float frequency);

    std::array<Row, 2 * sawRows> rows = {};
};
