// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/LevelPicture.h"

#include <algorithm>
#include <cmath>

#include "drawing/ImageLoader.h"
#include "game/TileSheet.h"
#include "images/EmbeddedImages.h"
#include "tools/PngFile.h"

static constexpr unsigned char background[] = {190, 182, 200}; // about the sky's middle
static constexpr int outlineShare = 16;  // 1 in so many of a tile, which an outline stands out
static constexpr float stepsPerTile = 8; // of a line

LevelPicture::LevelPicture(const LevelMap& level)
    : map(level),
      side(std::uint64_t{level.getWidth()} * level.getHeight() > manyTiles ? 1 : fullSide),
      width(static_cast<int>(level.getWidth()) * side),
      height(static_cast<int>(level.getHeight()) * side),
      pixels(3 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
    makeLooks();
    for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = background[i % 3];
    for (int row = 0; row < static_cast<int>(map.getHeight()); ++row) {
        for (int column = 0; column < static_cast<int>(map.getWidth()); ++column) {
            paintOutline(column, row);
            paintCell(column, row);
        }
    }
}

// The mean of the square of the sheet that a pixel covers, clear parts counted as clear.
void LevelPicture::makeLooks() {
    const LoadedImage sheet = ImageLoader().loadFromMemory(spriteImages[spriteTiles].data,
                                                           spriteImages[spriteTiles].bytes);
    if (!sheet.pixels) return;
    const int covered = tileSheetPixels / side;
    const auto look = [&](int cellColumn, int cellRow) {
        std::array<Dot, fullSide* fullSide> dots = {};
        for (int i = 0; i < side * side; ++i) {
            std::array<int, 4> sums = {};
            for (int k = 0; k < covered * covered; ++k) {
                const int x = cellColumn * tileSheetPixels + i % side * covered + k % covered;
                const int y = cellRow * tileSheetPixels + i / side * covered + k / covered;
                const std::uint8_t* pixel =
                    sheet.pixels.get() +
                    4 * (static_cast<std::size_t>(y) * sheet.width + static_cast<std::size_t>(x));
                for (std::size_t c = 0; c < 3; ++c) sums[c] += pixel[c] * pixel[3];
                sums[3] += pixel[3];
            }
            Dot& dot = dots[static_cast<std::size_t>(i)];
            const int area = 255 * covered * covered;
            for (std::size_t c = 0; c < 3; ++c) dot.added[c] = sums[c] / area;
            dot.kept = 256 - 256 * sums[3] / area;
        }
        return dots;
    };
    looks.fill(look(0, 0)); // of all codes that have no other
    for (const TileLook& rock : rockLooks) looks[rock.code] = look(rock.column, rock.row);
    looks[LevelMap::flame] = look(0, flameRow);
}

void LevelPicture::paintCell(int column, int row) {
    const std::uint8_t code = map.at(column, row);
    if (code == LevelMap::empty) return;
    for (int i = 0; i < side * side; ++i) {
        paint(column * side + i % side, row * side + i / side,
              looks[code][static_cast<std::size_t>(i)]);
    }
}

// The black frames of rock tiles, where they reach into this cell: thinner than a pixel.
void LevelPicture::paintOutline(int column, int row) {
    if (LevelMap::isRock(map.at(column, row))) return;
    const Dot shade{{}, 256 - 256 * side / outlineShare};
    for (int i = 0; i < side; ++i) {
        const int left = column * side, top = row * side, last = side - 1;
        if (LevelMap::isRock(map.at(column - 1, row))) paint(left, top + i, shade);
        if (LevelMap::isRock(map.at(column + 1, row))) paint(left + last, top + i, shade);
        if (LevelMap::isRock(map.at(column, row - 1))) paint(left + i, top, shade);
        if (LevelMap::isRock(map.at(column, row + 1))) paint(left + i, top + last, shade);
    }
}

void LevelPicture::paint(int x, int y, const Dot& dot) {
    if (x < 0 || x >= width || y < 0 || y >= height) return;
    unsigned char* pixel =
        pixels.data() + 3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                             static_cast<std::size_t>(x));
    for (std::size_t c = 0; c < 3; ++c) {
        pixel[c] =
            static_cast<unsigned char>(std::min(255, dot.added[c] + pixel[c] * dot.kept / 256));
    }
}

// Around the middle of the tile of a place.
void LevelPicture::drawSquare(WorldPoint place, int size, Colour colour) {
    const int x = static_cast<int>((place.x + 0.5f) * static_cast<float>(side)) - size / 2;
    const int y = static_cast<int>((place.y + 0.5f) * static_cast<float>(side)) - size / 2;
    const Dot dot{{colour.red, colour.green, colour.blue}, 0};
    for (int i = 0; i < size * size; ++i) paint(x + i % size, y + i / size, dot);
}

void LevelPicture::drawRun(const std::vector<WorldPoint>& path) {
    if (path.empty()) return;
    constexpr Colour rim{40, 0, 30}, line{255, 40, 80}, first{40, 230, 60}, last{255, 220, 0};
    const auto drawLine = [&](int size, Colour colour) {
        for (std::size_t i = 1; i < path.size(); ++i) {
            const WorldPoint from = path[i - 1], to = path[i];
            const float length = std::max(std::fabs(to.x - from.x), std::fabs(to.y - from.y));
            const int steps = 1 + static_cast<int>(length * stepsPerTile);
            for (int k = 0; k <= steps; ++k) {
                const float part = static_cast<float>(k) / static_cast<float>(steps);
                drawSquare({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part}, size,
                           colour);
            }
        }
    };
    drawLine(4, rim);
    drawLine(2, line);
    for (const auto& [place, colour] :
         {std::pair(path.front(), first), std::pair(path.back(), last)}) {
        drawSquare(place, 20, rim);
        drawSquare(place, 16, colour);
    }
}

bool LevelPicture::write(const std::string& file) const {
    return writePng(file, width, height, pixels.data(), 3 * width);
}
