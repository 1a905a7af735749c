// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <memory>

#include "base/FilePath.h"
#include "drawing/LoadedImage.h"

// A level: a grid of tile codes made from a picture, one pixel a tile, the picture's top row being
// row 0. The screen that plays on it owns it; after loading it is only read. A code is the first
// byte of its pixel, the red one. Two codes have rules of their own, every other is solid rock.
class LevelMap {
public:
    static constexpr std::uint8_t empty = 0xFF; // the runner passes through
    static constexpr std::uint8_t flame = 0xE0; // solid, and throws the runner back
    static constexpr std::uint8_t outside = 0;  // what lies beyond the grid: solid rock

    static constexpr bool isRock(std::uint8_t code) { return code != empty && code != flame; }

    // Loads a picture of 3 or 4 bytes a pixel. The grid is empty, 0 by 0, if there is none.
    explicit LevelMap(const FilePath& path);
    explicit LevelMap(const LoadedImage& picture);

    LevelMap(const LevelMap&) = delete;
    LevelMap& operator=(const LevelMap&) = delete;

    std::uint32_t getWidth() const { return width; }   // tiles a row
    std::uint32_t getHeight() const { return height; } // rows

    bool contains(int column, int row) const {
        // A negative number turns into one beyond every size.
        return static_cast<std::uint32_t>(column) < width &&
               static_cast<std::uint32_t>(row) < height;
    }

    // The code of any cell at all; `outside` beyond the grid.
    std::uint8_t at(int column, int row) const {
        return contains(column, row)
                   ? rows[static_cast<std::uint32_t>(row)][static_cast<std::uint32_t>(column)]
                   : outside;
    }

private:
    using Row = std::unique_ptr<std::uint8_t[]>; // width codes

    std::unique_ptr<Row[]> rows; // height rows
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};
