// SPDX-License-Identifier: Zlib
#pragma once

#include "game/CloudField.h"
#include "game/LevelMap.h"
#include "game/Player.h"
#include "game/StarTrail.h"
#include "game/TileRenderer.h"
#include "game/TimeVortex.h"
#include "screens/GameState.h"

// The closing scene, on a level of its own: the vortex opens, the runner drops in with nobody at
// the controls, a line comes up, and then a sound and "TO BE CONTINUED". It stays until the program
// is ended.
class Epilogue : public GameState {
public:
    explicit Epilogue(Application& owner);

    void draw(Drawer& drawer) override;
    void keyPressed(const std::string& action, const SDL_keysym* key) override;
    std::string getName() const override { return "Epilogue"; }

private:
    friend class Inspector;

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
