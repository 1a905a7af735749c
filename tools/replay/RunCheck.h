// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class RunLevel;

// What a run reaches.
struct RunResult {
    bool goal = false;
    std::uint32_t frames = 0; // of the play, the goal's the last

    double seconds() const;
    std::string text() const; // "goal, 1200 frames, 18.000 s", or "no goal, ..."
};

// What the rules say about the run of a file.
struct RunCheck {
    std::string file;
    std::string player;            // empty if not given
    std::uint32_t titleFrames = 0; // before the play
    RunResult result;              // until the goal, or of all frames
    std::string problem;           // why the file is not good, empty if it is
    bool cutShort = false;         // the file has no end

    // The player's name, or else the file's without folders and ending.
    std::string name() const;

    // Plays the run of the file. A file that cannot be read is a problem, too.
    static RunCheck of(const std::string& file, const RunLevel& level);

    // A line for a person.
    std::string line(const RunLevel& level) const;

    static std::string json(const std::vector<RunCheck>& checks, const RunLevel& level);

    // A line for each run of a race, the fastest first, and those without a goal last.
    static std::string table(std::vector<RunCheck> checks);
};
