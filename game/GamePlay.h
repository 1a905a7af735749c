// SPDX-License-Identifier: Zlib
#pragma once

#include "app/GameState.h"
#include "game/CloudField.h"
#include "game/LevelMap.h"
#include "game/Player.h"
#include "game/StarTrail.h"
#include "game/TileRenderer.h"
#include "game/TimeVortex.h"

// The play: one runner in one big level, and one goal, a speed of 1.5 tiles per frame in the flight
// of a wall kick. Then the runner spins away, a vortex closes the screen, and the epilogue follows.
// It owns the level and everything in it and takes all of it a step further with each draw.
class GamePlay : public GameState {
public:
    // Loads the level. Without a usable picture the runner stands still in solid rock.
    explicit GamePlay(Application& owner);

    void draw(Drawer& drawer) override;
    void keyPressed(const std::string& action, const SDL_keysym* key) override;
    void keyReleased(const std::string& action, const SDL_keysym* key) override;
    std::string getName() const override { return "GamePlay"; }

private:
    friend class Inspector;

    void step();
    void drawWorld(Drawer& drawer);
    void drawSpeed(Drawer& drawer) const;
    void holdKey(const std::string& action, bool held);

    LevelMap map;
    TileRenderer tiles;
    CloudField clouds;
    Player player;
    StarTrail trail;
    TimeVortex vortex;
    bool finished = false; // the goal was reached; only what drawing moves still moves
    HeldKeys heldKeys;
};
