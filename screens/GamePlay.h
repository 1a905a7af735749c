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

// The play: one runner in one big level. The only goal is a speed of 1.5 tiles per frame in the
// flight of a wall kick. After that the runner spins away, a vortex closes the screen, and the
// epilogue follows. This class owns the level and everything in it, and each draw advances all of
// it by one step. The music adapts to the play once a bar. Main thread, except for onBar.
class GamePlay : public GameState, public AudioSingleton::Callback {
public:
    // Loads the level and starts the music. Without a usable level file the runner stands still in
    // solid rock.
    explicit GamePlay(Application& owner);

    // Ends the music. No bar event runs after that.
    ~GamePlay() override;

    void draw(Drawer& drawer) override;
    void keyPressed(const std::string& action, const SDL_keysym* key) override;
    void keyReleased(const std::string& action, const SDL_keysym* key) override;
    std::string getName() const override { return "GamePlay"; }

    void onBar() override; // audio thread

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
    bool finished = false; // the goal was reached; nothing but drawing continues
    HeldKeys heldKeys;
    PlayMusic music;
};
