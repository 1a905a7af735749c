// SPDX-License-Identifier: Zlib
#pragma once

#include "tools/replay/ScriptRun.h"

// Shows a run in the game's window, with its sound. Any key or button ends it.
class WatchRun : public ScriptRun {
public:
    // Speed 1 is the game's own. The frames before `from` are played as fast as possible and not
    // shown.
    WatchRun(const InputScript& script, const RunLevel& level, const Options& options, double speed,
             std::uint32_t from);

    // Plays the script to its end, or until the player ends it.
    void play() { runScript(); }

    // Of the frames that were shown; 0 for none.
    double framesPerSecond() const;

    Uint32 ticks() override;
    void delay(Uint32 milliseconds) override;

private:
    void takeWindowEvent(const SDL_Event& event) override;
    void addEvents() override;
    bool finishFrame() override;

    double speed;
    std::uint32_t from;
    Uint32 skipped = 1000; // ms of the game's clock before the first frame that is shown
    Uint32 shownSince = 0; // ms of the real clock, when that frame began
    Uint32 shownUntil = 0; // and when the last one was drawn
    double owed = 0;       // ms still to be waited, less than one
};
