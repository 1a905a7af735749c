// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Run.h"

#include <sstream>

// Frames of a script.
static constexpr std::size_t firstTitleKey = 10;
static constexpr std::size_t titleKeyGap = 4;
static constexpr std::size_t playBegin = 30;     // the frame of the last key, and the play's first
static constexpr std::size_t vortexFrames = 200; // from the goal to the epilogue
static constexpr std::size_t storyFrames = 325;  // of the epilogue, until after its last text

void step(Player& player, Input input, const LevelMap& map) {
    if (input.press) player.requestKick();
    player.update(input.held(), map);
}

Run::Run(const LevelMap& map, const Inputs& inputs) {
    path.reserve(inputs.size());
    for (const Input input : inputs) {
        step(player, input, map);
        path.push_back(player.position());
        goal = player.kickSpeed() >= goalSpeed;
        if (goal) return;
    }
}

Inputs simplified(const LevelMap& map, const Inputs& inputs) {
    Inputs simple = inputs;
    if (inputs.empty()) return simple;
    const Run wanted(map, inputs);
    const auto isSame = [&](const Run& run) {
        const WorldPoint one = run.path.back(), other = wanted.path.back();
        return run.goal && run.path.size() == wanted.path.size() && one.x == other.x &&
               one.y == other.y;
    };
    for (std::size_t i = 1; i < simple.size(); ++i) {
        const Input::Direction before = simple[i - 1].direction, now = simple[i].direction;
        if (simple[i].press) {
            simple[i].press = false;
            simple[i].press = !isSame(Run(map, simple));
        }
        if (now == before) continue;
        Inputs tried = simple;
        for (std::size_t k = i; k < tried.size() && tried[k].direction == now; ++k) {
            tried[k].direction = before;
        }
        if (isSame(Run(map, tried))) simple = tried;
    }
    return simple;
}

std::size_t epilogueFrame(const Inputs& inputs) {
    return playBegin + inputs.size() - 1 + vortexFrames;
}

std::string scriptOf(const Inputs& inputs, const std::string& header) {
    std::ostringstream text;
    text << header << "# goal: " << inputs.size() << " frames\n";
    text << "# The title's pages by key, the play from its start to the goal, and the epilogue "
            "until its\n# last text. Written by tarnwick-levelcheck.\n# The epilogue begins in "
            "frame "
         << epilogueFrame(inputs) << ".\n";
    for (std::size_t frame = firstTitleKey; frame <= playBegin; frame += titleKeyGap) {
        text << frame << " action\n";
    }
    constexpr const char* names[] = {"", " left", " right"}; // by direction
    Input::Direction held = Input::none;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        if (inputs[i].direction == held && !inputs[i].press) continue;
        held = inputs[i].direction;
        text << playBegin + i << names[held] << (inputs[i].press ? " action" : "") << "\n";
    }
    text << epilogueFrame(inputs) + storyFrames << " end\n";
    return text.str();
}
