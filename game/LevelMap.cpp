// SPDX-License-Identifier: Zlib
#include "game/LevelMap.h"

#include <cstddef>

#include "drawing/ImageLoader.h"

LevelMap::LevelMap(const FilePath& path) : LevelMap(ImageLoader().loadFromFile(path.text())) {}

LevelMap::LevelMap(const LoadedImage& picture) : width(picture.width), height(picture.height) {
    rows = std::make_unique<Row[]>(height);
    const std::uint8_t* pixel = picture.pixels.get();
    for (std::size_t y = 0; y < height; ++y) {
        rows[y] = std::make_unique<std::uint8_t[]>(width);
        for (std::size_t x = 0; x < width; ++x, pixel += 4) rows[y][x] = *pixel;
    }
}
