// SPDX-License-Identifier: Zlib
#include "tests/support/GoalRun.h"

#include <fstream>

#include "game/LevelMap.h"
#include "game/PlayRules.h"
#include "tools/replay/InputScript.h"

LevelMap GoalRun::loadLevel() {
    return LevelMap(FilePath::getDataDirectory().join("levels").join("episode1.png"));
}

std::vector<GoalRun::Frame> GoalRun::find(const LevelMap& map, const std::string& name) {
    std::ifstream source(REPLAYS "/" + name + ".txt");
    InputScript script;
    std::string failure;
    if (!script.read(source, failure)) return {};
    std::vector<Frame> run;
    Player player(playStart);
    Frame frame;
    int titleKeys = 6; // start the play
    bool* const keys[] = {&frame.held.up, &frame.held.left, &frame.held.right, &frame.held.down};
    for (std::uint32_t number = 0; number < script.getEnd(); ++number) {
        frame.action = false;
        for (const InputScript::Press& press : script.pressesBefore(number)) {
            if (press.key < InputScript::action) *keys[press.key] = press.pressed;
            if (press.key == InputScript::action && press.pressed) frame.action = true;
        }
        if (titleKeys > 0 && frame.action && --titleKeys == 0) frame.action = false;
        if (titleKeys > 0) continue;
        frame.before = Inspector::motion(player);
        run.push_back(frame);
        if (frame.action) player.requestKick();
        player.update(frame.held, map);
        if (player.kickSpeed() >= goalSpeed) return run;
    }
    return {};
}
