// SPDX-License-Identifier: Zlib
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/replay/RulesRun.h"

class Drawer;
class RunLevel;

// Earlier runs beside a play: their runners, pale, each with its name over it. They start with the
// play and move by the rules alone.
class Ghosts {
public:
    static constexpr std::size_t most = 8;

    // The run of a file, on a level that outlives the ghosts. Throws std::runtime_error if it
    // cannot be read, is for another level, or has no play.
    void add(const std::string& file, const RunLevel& level);

    // Draws each ghost over a frame of the play, before that is shown, and moves it a step.
    void draw(Drawer& drawer, const Player& runner);

private:
    struct Ghost {
        Ghost(const std::string& file, const RunLevel& level);

        InputScript script;
        RulesRun run;
        std::string name; // as it is shown
        int spinFrames = 0;
    };

    static void draw(Ghost& ghost, Drawer& drawer, std::int32_t font, float nameTop);

    std::vector<std::unique_ptr<Ghost>> ghosts;
    std::int32_t font = 0;
};
