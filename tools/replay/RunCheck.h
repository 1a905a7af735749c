// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class RunLevel;

// What the rules say about the run of a file.
struct RunCheck {
    std::string file;
    std::string player;       // empty if not given
    bool goal = false;        // the run reaches it
    std::uint32_t frames = 0; // of the play, up to the goal
    std::string problem;      // why the file is not good, empty if it is
    bool cutShort = false;    // the file has no end

    double seconds() const;

    // "goal, 1200 frames, 18.00 s", or "no goal, ..."
    std::string resultText() const;

    // Plays the run of the file. A file that cannot be read is a problem, too.
    static RunCheck of(const std::string& file, const RunLevel& level);

    // A line for a person.
    std::string line(const RunLevel& level) const;

    static std::string json(const std::vector<RunCheck>& checks, const RunLevel& level);
};
