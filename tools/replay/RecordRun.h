// SPDX-License-Identifier: Zlib
#pragma once

#include "tools/replay/GameRun.h"
#include "tools/replay/RunWriter.h"

class RunLevel;

// The game as it is, with its window, sound and clock, and a file of what the player does. Before
// each frame the keys since the last one are turned into a line of the file, and the game gets
// exactly this line, so that the file plays the same run.
class RecordRun : public GameRun {
public:
    // Makes the file; see RunWriter. If the options name no tune, the seed picks one of the game's.
    RecordRun(const std::string& file, const std::string& player, const RunLevel& level,
              Options options);

    // Runs the game until the player closes it. Throws std::runtime_error if there is no window or
    // the file could not be written.
    void play();

private:
    void takeWindowEvent(const SDL_Event& event) override;
    void addEvents() override;
    bool finishFrame() override { return true; }
    void takeKey(int key, bool pressed);

    RunWriter writer;
    unsigned held = 0;    // direction keys, a bit each
    unsigned pressed = 0; // keys pressed since the last frame
    unsigned shown = 0;   // the direction keys that the game knows to be held
    bool closed = false;  // by the player
};
