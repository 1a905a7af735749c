// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

#include "game/Player.h"
#include "tools/replay/InputScript.h"

class LevelMap;

// A run by the rules alone, without window and sound, in the same frames as in the game: the pages
// of the title, then the play up to the goal. Script and level must outlive it.
class RulesRun {
public:
    RulesRun(const InputScript& script, const LevelMap& map);

    // The next frame. Returns false, without a frame, at the end of the script and after the goal.
    bool step();

    Player& getPlayer() { return player; } // to draw it; from the goal on it spins away
    const HeldKeys& getHeldKeys() const { return held; }    // in the last frame
    bool hasPressedAction() const { return pressedAction; } // in the last frame
    bool reachesGoal() const { return goal; }
    std::uint32_t getPlayFrames() const { return playFrames; } // up to now, the goal's included
    std::uint32_t getTitleFrames() const { return frame - playFrames; }

private:
    void handle(const InputScript::Press& press);
    void turnPage();
    void play();

    const InputScript& script;
    const LevelMap& map;
    std::uint32_t frame = 0;
    int page = 0;        // of the title, as in TitleScreen
    int pageFrames = 30; // frames left on this page
    bool playing = false;
    bool quit = false;
    bool goal = false;
    bool pressedAction = false;
    HeldKeys held;
    Player player;
    std::uint32_t playFrames = 0;
};
