// SPDX-License-Identifier: Zlib
#pragma once

#include <vector>

#include "tools/replay/ScriptRun.h"

// Runs the game on a script as fast as it draws, without a sound device: the clock advances only by
// the waits, which take no time. A run with the same seed is the same every time.
class OfflineRun : public ScriptRun {
public:
    OfflineRun(const InputScript& script, const RunLevel& level, Options options);

    Uint32 ticks() override { return clock; }
    void delay(Uint32 milliseconds) override { clock += milliseconds; }

protected:
    // Runs the game with the settings of a new user.
    void runOffline();

    bool finishFrame() override;

    // Called for each frame before it is shown, with its sound: stereo samples, -1 to 1.
    virtual void takeFrame(const std::vector<float>& sound) = 0;

private:
    Uint32 clock = 1000; // ms
};
