// SPDX-License-Identifier: Zlib
#include "tools/replay/ScriptRun.h"

#include <stdexcept>

#include "base/FilePath.h"
#include "tools/replay/RunLevel.h"

ScriptRun::ScriptRun(const InputScript& played, const RunLevel& level, Options chosen)
    : GameRun(std::move(chosen)), script(played) {
    const InputScript::Header& header = script.getHeader();
    const std::string refusal = level.refusal(header);
    if (!refusal.empty()) throw std::runtime_error("the run does not fit this level: " + refusal);
    if (options.pitches.empty() && !header.pitches.empty()) {
        const FilePath tune(dataFolder() + "/pitches/" + header.pitches);
        if (tune.isOrdinaryFile()) options.pitches = tune.text();
    }
}

void ScriptRun::runScript() {
    run();
    if (!reachedEnd && !closed) throw std::runtime_error("the game ended before the run did");
}

void ScriptRun::takeWindowEvent(const SDL_Event& event) {
    if (event.type == SDL_QUIT) closed = true;
}

void ScriptRun::addEvents() {
    for (const InputScript::Press& press : script.pressesBefore(frame)) {
        addKey(press.key, press.pressed);
    }
    reachedEnd = frame >= script.getEnd();
    if (reachedEnd || closed) addQuit();
}
