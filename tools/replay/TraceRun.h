// SPDX-License-Identifier: Zlib
#pragma once

#include <fstream>
#include <memory>
#include <set>
#include <string>

#include "tools/WavFile.h"
#include "tools/replay/OfflineRun.h"

// Writes what happens in a run: a line a frame, pictures of some frames, the sound.
class TraceRun : public OfflineRun {
public:
    struct Outputs {
        std::string trace;              // file to write, empty for none
        std::string pictures;           // folder for the pictures
        std::uint32_t every = 0;        // a picture of every Nth frame, 0 for none
        std::set<std::uint32_t> frames; // pictures of these frames
        std::string sound;              // WAV file to write, empty for none
    };

    TraceRun(const InputScript& script, const RunLevel& level, const Options& options,
             const Outputs& outputs);

    // Plays the script to its end. Throws std::runtime_error if it cannot.
    void play();

private:
    void takeFrame(const std::vector<float>& samples) override;
    void open();
    void writeTrace();
    void writePicture();

    Outputs outputs;
    std::ofstream trace;
    std::unique_ptr<WavFile> sound;
    std::string failure; // of the writing, empty for none
};
