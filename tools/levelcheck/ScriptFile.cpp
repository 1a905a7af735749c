// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/ScriptFile.h"

#include <sstream>

static constexpr std::size_t firstTitleKey = 10; // frame
static constexpr std::size_t titleKeyGap = 4;    // frames
static constexpr std::size_t playBegin = 30;     // the frame of the last key, and the play's first
static constexpr std::size_t vortexFrames = 200; // from the goal to the epilogue
static constexpr std::size_t storyTail = 325; // frames of the epilogue until behind its last text

static const char* nameOf(Input::Direction direction) {
    if (direction == Input::left) return " left";
    return direction == Input::right ? " right" : "";
}

std::size_t epilogueFrame(const Inputs& inputs) {
    return playBegin + inputs.size() - 1 + vortexFrames;
}

std::string scriptOf(const Inputs& inputs) {
    std::ostringstream text;
    text << "# The title's pages by key, the play from its start to the goal, and the epilogue "
            "until its\n# last text. Written by tarnwick-levelcheck.\n# The epilogue begins in "
            "frame "
         << epilogueFrame(inputs) << ".\n";
    for (std::size_t frame = firstTitleKey; frame <= playBegin; frame += titleKeyGap) {
        text << frame << " action\n";
    }
    Input::Direction held = Input::none;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        if (inputs[i].direction == held && !inputs[i].press) continue;
        held = inputs[i].direction;
        text << playBegin + i << nameOf(held) << (inputs[i].press ? " action" : "") << "\n";
    }
    text << epilogueFrame(inputs) + storyTail << " end\n";
    return text.str();
}
