// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <memory>

#include "base/FilePath.h"
#include "drawing/LoadedImage.h"

// A level: a grid of tile codes made from a picture, one pixel per tile; row 0 is at the top. A
// code is the first byte of its pixel, red. Two codes have rules of their own; all others are solid
// rock. A screen owns its level, which never changes after loading.
class LevelMap {
public:
    static constexpr std::uint8_t empty = 0xFF; // the runner passes through
    static constexpr std::uint8_t flame = 0xE0; // solid, and throws the runner back
    static constexpr std::uint8_t outside = 0;  // everything beyond the grid: solid rock

    static constexpr bool isRock(std::uint8_t code) { return code != empty && code != flame; }

    // Loads a picture of 3 or 4 bytes per pixel. If that fails the grid is empty, 0 by 0.
    explicit LevelMap(const FilePath& path);
    explicit LevelMap(const LoadedImage& picture);

    LevelMap(const LevelMap&) = delete;
    LevelMap& operator=(const LevelMap&) = delete;

    std::uint32_t getWidth() const { return width; }   // tiles per row
    std::uint32_t getHeight() const { return height; } // rows

    bool contains(int column, int row) const {
        // Negative numbers become larger than any size.
        return static_cast<std::uint32_t>(column) < width &&
               static_cast<std::uint32_t>(row) < height;
    }

    // The code of any cell; `outside` beyond the grid.
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
