// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "game/WorldPoint.h"

class LevelMap;
class OpenGLDrawer;

// The picture of a level with nothing left out: an outline for every rock in view, a base quad for
// every cell, the clear ones too, and a flame's second quad on top. It is slow and plain, and what
// the game's TileRenderer shows must be the same to the pixel. It knows the sheet by a table of its
// own and has textures of its own.
class LiteralTileRenderer {
public:
    LiteralTileRenderer();

    void draw(OpenGLDrawer& drawer, const LevelMap& map, WorldPoint camera);

private:
    struct SheetCell {
        float u = 0;
        float v = 0;
    };
    // A cell of the grid in the window of 21 by 13, at its place on the screen in units.
    struct Tile {
        std::uint8_t code;
        float x, y;
    };

    static std::vector<Tile> tilesInView(const LevelMap& map, WorldPoint camera);
    static void drawSheetCell(OpenGLDrawer& drawer, const Tile& tile, SheetCell cell);

    std::array<SheetCell, 256> cells; // by tile code
    int flameFrame = 0;               // 0 to 2
    int flameCountdown = 6;           // drawings until the next flame frame
};
