// SPDX-License-Identifier: Zlib
#include "game/LevelMap.h"

#include <cstddef>
#include <new>
#include <utility>

#include "drawing/ImageLoader.h"

LevelMap::LevelMap(const FilePath& path)
    : LevelMap(path.isOrdinaryFile() ? ImageLoader().loadFromFile(path.text()) : LoadedImage()) {}

LevelMap::LevelMap(const LoadedImage& picture) {
    std::unique_ptr<Row[]> grid(new (std::nothrow) Row[picture.height]);
    if (!grid) return; // out of memory: the level stays empty
    const std::uint8_t* pixel = picture.pixels.get();
    for (std::size_t y = 0; y < picture.height; ++y) {
        grid[y].reset(new (std::nothrow) std::uint8_t[picture.width]);
        if (!grid[y]) return;
        for (std::size_t x = 0; x < picture.width; ++x, pixel += 4) grid[y][x] = *pixel;
    }
    rows = std::move(grid);
    width = picture.width;
    height = picture.height;
}
