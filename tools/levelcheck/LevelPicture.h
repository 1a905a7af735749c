// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "game/LevelMap.h"
#include "tools/levelcheck/Run.h"

// A picture of a whole level as it looks in the game, the tiles made smaller, in front of one even
// colour, with the way of a run drawn over it.
class LevelPicture {
public:
    explicit LevelPicture(const LevelMap& level);

    // Draws the way of a run, a green mark at its start and a yellow one at its end.
    void drawRun(const std::vector<WorldPoint>& path);

    // As a PNG file. False if it cannot be written.
    bool write(const std::string& file) const;

private:
    struct Colour {
        int red = 0;
        int green = 0;
        int blue = 0;
    };
    // A tile at the picture's size: what it adds, and the share of what is behind that stays.
    struct Dot {
        std::array<int, 3> added = {};
        int kept = 256; // of 256
    };

    void makeLooks();
    void paintCell(int column, int row);
    void paintOutline(int column, int row);
    void paint(int x, int y, const Dot& dot);
    void drawSquare(WorldPoint place, int size, Colour colour);

    static constexpr int fullSide = 4;                  // pixels a tile
    static constexpr std::uint64_t manyTiles = 1 << 22; // so large a level has one pixel a tile

    const LevelMap& map;
    int side;                          // pixels a tile
    int width;                         // pixels
    int height;                        // pixels
    std::vector<unsigned char> pixels; // red, green, blue, rows from the top
    std::array<std::array<Dot, fullSide * fullSide>, 256> looks; // by code, rows from the top
};
