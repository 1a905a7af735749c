// SPDX-License-Identifier: Zlib
#include "tests/support/GoalRun.h"

#include "game/LevelMap.h"
#include "tools/replay/RulesRun.h"

LevelMap GoalRun::loadLevel() {
    return LevelMap(FilePath::getDataDirectory().join("levels").join("episode1.png"));
}

std::vector<GoalRun::Frame> GoalRun::find(const LevelMap& map, const std::string& name) {
    const InputScript script = InputScript::fromFile(REPLAYS "/" + name + ".txt");
    std::vector<Frame> frames;
    RulesRun run(script, map);
    Inspector::Motion before = Inspector::motion(run.getPlayer());
    while (run.step()) {
        if (run.getPlayFrames() == 0) continue;
        frames.push_back({before, run.getHeldKeys(), run.hasPressedAction()});
        before = Inspector::motion(run.getPlayer());
    }
    return run.reachesGoal() ? frames : std::vector<Frame>();
}
