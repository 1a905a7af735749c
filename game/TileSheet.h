// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

// Where the looks of the tiles lie in the picture of them all, a sheet of 8 by 8 cells, each 16 by
// 16 pixels. The first cell is the look of every code of rock that is not named.
struct TileLook {
    std::uint8_t code;
    int column; // of the sheet
    int row;
};

inline constexpr int tileSheetSide = 8;    // cells
inline constexpr int tileSheetPixels = 16; // a cell's side

inline constexpr TileLook rockLooks[] = {
    {0x00, 1, 0}, {0x40, 2, 0}, {0x60, 4, 0}, {0x80, 5, 0}, {0xFE, 3, 0},
};
inline constexpr int flameRow = 7; // with three pictures of a flame in the first columns
