// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstdint>

#include "game/WorldPoint.h"

class Drawer;
class LevelMap;

// Paints the part of a level that the camera sees: black outlines first, the tiles over them, so
// that an outline shows only where rock borders the open. Quads that can't show are left out: those
// of the clear cell, and outlines under rock on all sides; what is seen is the same picture. The
// screen that plays owns it and calls draw once a frame, which steps the flames. Main thread.
class TileRenderer {
public:
    TileRenderer();

    void draw(Drawer& drawer, const LevelMap& map, WorldPoint camera);

private:
    // Place of a cell on the tile sheet, in texture coordinates of its top left corner.
    struct SheetCell {
        float u = 0;
        float v = 0;
    };

    void drawOutlines(Drawer& drawer, const LevelMap& map, WorldPoint camera) const;
    void drawTiles(Drawer& drawer, const LevelMap& map, WorldPoint camera) const;
    void stepFlames();

    std::array<SheetCell, 256> cells; // by tile code
    std::array<SheetCell, 3> flameCells;
    int flameFrame = 0;     // 0 to 2
    int flameCountdown = 6; // drawings until the next flame frame
};
