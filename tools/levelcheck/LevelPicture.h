// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "game/LevelMap.h"
#include "game/WorldPoint.h"

// A picture of a whole level as it looks in the game, the tiles made smaller, in front of one even
// colour, with the path of a run drawn over it.
class LevelPicture {
public:
    explicit LevelPicture(const LevelMap& level);

    // Draws the path of a run, a green mark at its start and a yellow one at its end.
    void drawRun(const std::vector<WorldPoint>& path);

    // As a PNG file. False if it cannot be written.
    bool write(const std::string& file) const;

private:
    using Colour = std::array<unsigned char, 3>; // red, green, blue

    void paintCells(const LevelMap& map);
    void drawSquare(WorldPoint place, int size, Colour colour);
    Colour& pixelAt(int x, int y);

    int side;                   // pixels a tile
    int width;                  // pixels
    int height;                 // pixels
    std::vector<Colour> pixels; // rows from the top
};
