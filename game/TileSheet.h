// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

// Where the tile styles lie on the tile sheet, a picture of 8 by 8 cells, each 16 by 16 pixels.
// Rock codes that are not listed use the first cell.
struct TileStyle {
    std::uint8_t code;
    int column; // of the sheet
    int row;
};

inline constexpr int tileSheetSide = 8;    // cells
inline constexpr int tileSheetPixels = 16; // a cell's side

inline constexpr TileStyle rockStyles[] = {
    {0x00, 1, 0}, {0x40, 2, 0}, {0x60, 4, 0}, {0x80, 5, 0}, {0xFE, 3, 0},
};
inline constexpr int flameRow = 7; // has the three flame frames in its first columns
