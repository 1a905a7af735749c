// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/LevelPicture.h"

#include <algorithm>
#include <array>

#include "drawing/ImageLoader.h"
#include "game/TileSheet.h"
#include "images/EmbeddedImages.h"
#include "tools/PngFile.h"

using Colour = std::array<unsigned char, 3>; // red, green, blue

static constexpr Colour background{190, 182, 200}; // the sky's middle
static constexpr Colour rim{40, 0, 30}, line{255, 40, 80}, first{40, 230, 60}, last{255, 220, 0};
static constexpr int pathSteps = 12;                // squares a frame of a run's line
static constexpr int fullSide = 4;                  // pixels a tile
static constexpr std::uint64_t manyTiles = 1 << 22; // then one pixel a tile

// The pixels, while they are painted.
class LevelPicture {
public:
    explicit LevelPicture(const LevelMap& map)
        : side(std::uint64_t{map.getWidth()} * map.getHeight() > manyTiles ? 1 : fullSide),
          width(static_cast<int>(map.getWidth()) * side),
          height(static_cast<int>(map.getHeight()) * side),
          pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), background) {
        const LoadedImage sheet = ImageLoader().loadFromMemory(spriteImages[spriteTiles].data,
                                                               spriteImages[spriteTiles].bytes);
        for (int y = 0; sheet.pixels && y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const std::uint8_t code = map.at(x / side, y / side);
                if (code != LevelMap::empty) pixelAt(x, y) = tilePixel(sheet, code, x, y);
            }
        }
    }

    void drawPath(const std::vector<WorldPoint>& path) {
        for (const auto& [size, colour] : {std::pair(4, rim), std::pair(2, line)}) {
            for (std::size_t i = 1; i < path.size(); ++i) {
                for (int k = 0; k < pathSteps; ++k) {
                    const float part = static_cast<float>(k) / pathSteps;
                    drawSquare({path[i - 1].x + (path[i].x - path[i - 1].x) * part,
                                path[i - 1].y + (path[i].y - path[i - 1].y) * part},
                               size, colour);
                }
            }
        }
        if (path.empty()) return;
        for (const auto& [place, colour] : {std::pair(path[0], first), {path.back(), last}}) {
            drawSquare(place, 20, rim);
            drawSquare(place, 16, colour);
        }
    }

    bool write(const std::string& file) const {
        return writePng(file, width, height, pixels.data()->data(), 3 * width);
    }

private:
    Colour& pixelAt(int x, int y) {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }

    // The mean of the square of the sheet that a pixel covers; clear parts show the background.
    Colour tilePixel(const LoadedImage& sheet, std::uint8_t code, int x, int y) const {
        TileStyle style{code, 0, code == LevelMap::flame ? flameRow : 0};
        for (const TileStyle& rock : rockStyles) {
            if (rock.code == code) style = rock;
        }
        const int covered = tileSheetPixels / side, area = 255 * covered * covered;
        std::array<int, 4> sums = {};
        for (int k = 0; k < covered * covered; ++k) {
            const int sheetX = style.column * tileSheetPixels + x % side * covered + k % covered;
            const int sheetY = style.row * tileSheetPixels + y % side * covered + k / covered;
            const std::uint8_t* pixel =
                sheet.pixels.get() + 4 * (static_cast<std::size_t>(sheetY) * sheet.width +
                                          static_cast<std::size_t>(sheetX));
            for (std::size_t c = 0; c < 3; ++c) sums[c] += pixel[c] * pixel[3];
            sums[3] += pixel[3];
        }
        Colour colour;
        for (std::size_t c = 0; c < 3; ++c) {
            const int mixed = sums[c] + background[c] * (area - sums[3]);
            colour[c] = static_cast<unsigned char>(mixed / area);
        }
        return colour;
    }

    // Around the middle of the tile of a place.
    void drawSquare(WorldPoint place, int size, Colour colour) {
        const int left = static_cast<int>((place.x + 0.5f) * static_cast<float>(side)) - size / 2;
        const int top = static_cast<int>((place.y + 0.5f) * static_cast<float>(side)) - size / 2;
        for (int y = std::max(0, top); y < std::min(height, top + size); ++y) {
            for (int x = std::max(0, left); x < std::min(width, left + size); ++x) {
                pixelAt(x, y) = colour;
            }
        }
    }

    const int side;             // pixels a tile
    const int width;            // pixels
    const int height;           // pixels
    std::vector<Colour> pixels; // rows from the top
};

bool writeLevelPicture(const std::string& file, const LevelMap& map,
                       const std::vector<WorldPoint>& path) {
    LevelPicture picture(map);
    picture.drawPath(path);
    return picture.write(file);
}
