// SPDX-License-Identifier: Zlib
#pragma once

#include "game/CloudField.h"
#include "game/LevelMap.h"
#include "game/Player.h"
#include "game/StarTrail.h"
#include "tests/support/GoalRun.h"

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

// The play on the shipped level with nothing left out of its picture: the whole background, every
// tile and outline, four rings of the vortex. What the game's play shows must be the same to the
// pixel. The two keep in step if both are made and drawn at the same values of the noise.
class LiteralPlay {
public:
    LiteralPlay() : map(GoalRun::loadLevel()), player({60, 984}) {}

    // Makes a step of the rules and paints a frame.
    void draw(OpenGLDrawer& drawer);

    Player& runner() { return player; }
    HeldKeys held;

private:
    void drawWorld(OpenGLDrawer& drawer);
    void drawSpeed(OpenGLDrawer& drawer) const;
    void drawVortex(OpenGLDrawer& drawer);

    LevelMap map;
    LiteralTileRenderer tiles;
    CloudField clouds;
    Player player;
    StarTrail trail;
    float vortexSize = 0;
    std::size_t vortexDrawings = 0; // so far
    bool finished = false;
};
