// SPDX-License-Identifier: Zlib
#pragma once

#include "game/CloudField.h"
#include "game/LevelMap.h"
#include "game/PlayMusic.h"
#include "game/Player.h"
#include "game/StarTrail.h"
#include "game/TileRenderer.h"
#include "game/TimeVortex.h"
#include "screens/GameState.h"
#include "sound/AudioSingleton.h"

// The play: one runner in one big level, and one goal, a speed of 1.5 tiles per frame in the flight
// of a wall kick. Then the runner spins away, a vortex closes the screen, and the epilogue follows.
// It owns the level and everything in it and takes all of it a step further with each draw. The
// music follows the play by one call a bar. Main thread, but for onBar.
class GamePlay : public GameState, public AudioSingleton::Callback {
public:
    // Loads the level and starts the music. Without a usable picture the runner stands still in
    // solid rock.
    explicit GamePlay(Application& owner);

    // Ends the music; no bar event runs when the objects of the play go.
    ~GamePlay() override;

    void draw(Drawer& drawer) override;
    void keyPressed(const std::string& action, const SDL_keysym* key) override;
    void keyReleased(const std::string& action, const SDL_keysym* key) override;
    std::string getName() const override { return "GamePlay"; }

    void onBar() override;

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
    PlayMusic music;
};
