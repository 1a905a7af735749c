// SPDX-License-Identifier: Zlib
#include "tools/replay/RulesRun.h"

#include "game/PlayRules.h"

// The title's pages, as in TitleScreen.
static constexpr int framesPerPage = 120;
static constexpr int callPage = 5;
static constexpr int lastPage = 6;

RulesRun::RulesRun(const InputScript& played, const LevelMap& level)
    : script(played), map(level), player(playStart) {}

bool RulesRun::step() {
    if (goal || frame >= script.getEnd()) return false;
    pressedAction = false;
    for (const InputScript::Press& press : script.pressesBefore(frame)) handle(press);
    if (quit) return false;
    ++frame;
    if (playing) {
        play();
    } else if (--pageFrames == 0) {
        turnPage();
    }
    return true;
}

// A key that starts the play is not held in it, and one held since the title isn't either.
void RulesRun::handle(const InputScript::Press& press) {
    if (press.pressed && press.key == InputScript::escape) quit = true;
    if (playing) {
        bool* const keys[] = {&held.up, &held.left, &held.right, &held.down};
        if (InputScript::isDirection(press.key)) *keys[press.key] = press.pressed;
        if (press.key == InputScript::action && press.pressed) pressedAction = true;
    } else if (press.pressed && press.key != InputScript::escape) {
        playing = page >= callPage;
        if (!playing) turnPage();
    }
}

void RulesRun::turnPage() {
    if (++page < lastPage) pageFrames = framesPerPage;
}

void RulesRun::play() {
    if (pressedAction) player.requestKick();
    player.update(held, map);
    ++playFrames;
    goal = player.kickSpeed() >= goalSpeed;
    if (goal) player.startWarp();
}
