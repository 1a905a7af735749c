// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Run.h"

static bool isSame(WorldPoint one, WorldPoint other) {
    return one.x == other.x && one.y == other.y;
}

void step(Player& player, Input input, const LevelMap& map) {
    if (input.press) player.requestKick();
    player.update(input.held(), map);
}

Run::Run(const LevelMap& map, const Inputs& inputs) {
    Player player(start);
    path.reserve(inputs.size());
    for (const Input input : inputs) {
        step(player, input, map);
        path.push_back(player.position());
        goal = player.kickSpeed() >= goalSpeed;
        if (goal) return;
    }
}

Inputs calmed(const LevelMap& map, const Inputs& inputs) {
    Inputs calm = inputs;
    const Run wanted(map, inputs);
    const auto holds = [&](const Inputs& tried) {
        const Run run(map, tried);
        return run.reachesGoal() == wanted.reachesGoal() && run.getLength() == wanted.getLength() &&
               isSame(run.getPath().back(), wanted.getPath().back());
    };
    for (std::size_t i = 1; i < calm.size(); ++i) {
        Inputs tried = calm;
        if (calm[i].press) {
            tried[i].press = false;
            if (holds(tried)) calm = tried;
        }
        const Input::Direction before = calm[i - 1].direction;
        const Input::Direction now = calm[i].direction;
        if (now == before) continue;
        tried = calm;
        for (std::size_t k = i; k < calm.size() && calm[k].direction == now; ++k) {
            tried[k].direction = before;
        }
        if (holds(tried)) calm = tried;
    }
    return calm;
}
