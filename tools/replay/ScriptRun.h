// SPDX-License-Identifier: Zlib
#pragma once

#include "tools/replay/GameRun.h"
#include "tools/replay/InputScript.h"

class RunLevel;

// Runs the game on a script.
class ScriptRun : public GameRun {
public:
    // If the options name no tune, the script's header does. Throws std::runtime_error if the
    // script is for another level.
    ScriptRun(const InputScript& script, const RunLevel& level, Options options);

protected:
    void takeWindowEvent(const SDL_Event& event) override;
    void addEvents() override;

    // Runs the game to the end of the script. Throws std::runtime_error if it ends before that,
    // unless the player closed it.
    void runScript();

    InputScript script;
    bool closed = false; // by the player

private:
    bool reachedEnd = false;
};
