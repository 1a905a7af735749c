// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstdint>

// One cycle each of seven saws and seven squares: the higher the notes they are for, the fewer
// harmonics they have. The program has one object. Its first use, on the main thread, builds it in
// a few milliseconds; from then on it is only read.
class WaveTables {
public:
    static constexpr std::int32_t length = 1024; // entries a row
    using Row = std::array<float, length>;

    // All that a voice reads at once: an entry of a saw, one of the square for the same notes, and
    // the entry after each, for interpolation.
    struct alignas(16) Read {
        float saw;
        float nextSaw;
        float square;
        float nextSquare;
    };

    static const WaveTables& instance();

    // The row for a frequency in hertz. A row's highest frequency belongs to it.
    const Row& sawRow(float frequency) const { return rows[rowIndex(frequency)]; }
    const Row& squareRow(float frequency) const { return rows[sawRows + rowIndex(frequency)]; }

    // The same tables as reads, and the index of the first read for a frequency.
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
