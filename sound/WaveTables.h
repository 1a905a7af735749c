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

    // An entry of a saw and of the square of the same notes, each with the one behind it, as a
    // voice that reads between two entries wants them.
    struct alignas(16) Read {
        float saw;
        float nextSaw;
        float square;
        float nextSquare;
    };

    static const WaveTables& instance();

    // The row for a note of that many hertz: below each limit and on it, the row of the limit.
    const Row& sawRow(float frequency) const { return rows[rowIndex(frequency)]; }
    const Row& squareRow(float frequency) const { return rows[sawRows + rowIndex(frequency)]; }

    // All of it once more, as reads; and which of them is the first of a note's rows.
    const Read* reads() const { return pairedRows.data(); }
    std::int32_t firstRead(float frequency) const {
        return static_cast<std::int32_t>(rowIndex(frequency)) * length;
    }

private:
    static constexpr std::size_t sawRows = 7;

    WaveTables();

    static std::size_t rowIndex(float frequency);
    void pairRows();

    std::array<Row, 2 * sawRows> rows = {};
    std::array<Read, sawRows * length> pairedRows;
};
