// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

#include "game/WorldPoint.h"

class LevelMap;
class OpenGLDrawer;

// The picture of a level with nothing left out: an outline for every rock in view, a quad for every
// cell, the clear ones too, and a second quad for a flame. What the game's TileRenderer shows must
// be the same to the pixel. It has its own table of the sheet and its own textures.
class LiteralTileRenderer {
public:
    void draw(OpenGLDrawer& drawer, const LevelMap& map, WorldPoint camera);

private:
    int drawings = 0; // so far
};
