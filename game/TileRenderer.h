// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstdint>

#include "game/WorldPoint.h"

class Drawer;
class LevelMap;
class OpenGLDrawer;

// Paints the part of a level that the camera sees: black outlines first and the tiles over them, so
// that an outline shows only where rock borders open space. It leaves out quads that cannot be
// seen: the clear cell, and outlines surrounded by rock. A screen owns it and calls draw once per
// frame, which also animates the flames. Main thread.
class TileRenderer {
public:
    TileRenderer();

    void draw(Drawer& drawer, const LevelMap& map, WorldPoint camera);

private:
    // The top left corner of a cell on the tile sheet, in texture coordinates.
    struct SheetCell {
        float u = 0;
        float v = 0;
    };

    void drawOutlines(OpenGLDrawer& drawer, const LevelMap& map, WorldPoint camera) const;
    void drawTiles(OpenGLDrawer& drawer, const LevelMap& map, WorldPoint camera) const;
    void stepFlames();

    std::array<SheetCell, 256> cells; // by tile code
    std::array<SheetCell, 3> flameCells;
    int flameFrame = 0;     // 0 to 2
    int flameCountdown = 6; // drawings until the next flame frame
};
