// SPDX-License-Identifier: Zlib
#pragma once

#include "game/CloudField.h"
#include "game/LevelMap.h"
#include "game/Player.h"
#include "game/StarTrail.h"
#include "game/TileRenderer.h"
#include "game/TimeVortex.h"
#include "screens/GameState.h"

// The closing scene, in its own level: the vortex opens and the runner drops in, out of the
// player's control. A line of text appears, and later a sound and "TO BE CONTINUED". The scene
// stays until the program ends.
class Epilogue : public GameState {
public:
    explicit Epilogue(Application& owner);

    void draw(Drawer& drawer) override;
    void keyPressed(const std::string& action, const SDL_keysym* key) override;
    std::string getName() const override { return "Epilogue"; }

private:
    void drawMessages(Drawer& drawer);

    LevelMap map;
    TileRenderer tiles;
    CloudField clouds;
    Player player;
    StarTrail trail;
    TimeVortex vortex;
    int messageFrames = 180; // frames until the first text
    int endFrames = 300;     // frames until the sound and the last text
};
