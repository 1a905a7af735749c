// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

#include "game/WorldPoint.h"

class LevelMap;
class OpenGLDrawer;

// The picture of a level with nothing left out: an outline for every rock in view, a base quad for
// every cell, the clear ones too, and a flame's second quad on top. It is slow and plain, and what
// the game's TileRenderer shows must be the same to the pixel. It knows the sheet by a table of its
// own and has textures of its own.
class LiteralTileRenderer {
public:
    void draw(OpenGLDrawer& drawer, const LevelMap& map, WorldPoint camera);

private:
    int drawings = 0; // so far
};
