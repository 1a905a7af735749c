// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "tools/replay/InputScript.h"

// Writes the file of a run while it is played. Each line reaches the system at once. While no key
// changes, a line is written every 60 frames, so a killed recorder loses less than a second of
// play.
class RunWriter {
public:
    // Makes the file. Throws std::runtime_error if it cannot, or if there is one already.
    RunWriter(const std::string& path, const InputScript::Header& header);

    // The keys of the next frame: a bit for each InputScript::Key that is held or pressed.
    void writeFrame(std::uint32_t frame, unsigned keys);

    // The end of the run before this frame, and the frames of the play up to the goal, if any.
    // Throws std::runtime_error if the file could not be written.
    void writeEnd(std::uint32_t frame, std::optional<std::uint32_t> goalFrames);

    // Removes the file: there is nothing to keep.
    void remove();

    // The name of a new file in the user's folder for runs, which is made if need be.
    static std::string newPath();

private:
    std::string path;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
    std::uint32_t lastFrame = 0; // of the last line
    unsigned lastKeys = 0;
};
