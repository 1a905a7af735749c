// SPDX-License-Identifier: Zlib
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "tools/replay/FilmFile.h"
#include "tools/replay/OfflineRun.h"

// Makes a film of a run: each frame's picture and sound.
class FilmRun : public OfflineRun {
public:
    // Starts the film; sizes in pixels. See FilmFile.
    FilmRun(const InputScript& script, const RunLevel& level, const Options& options,
            const std::string& path, int width, int height);

    // Plays the script to its end. Throws std::runtime_error if it cannot.
    void play();

private:
    void takeFrame(const std::vector<float>& samples) override;
    bool finishFrame() override;
    void showProgress();

    int width;
    int height;
    FilmFile film;
    std::vector<unsigned char> pixels;
    bool onTerminal; // standard error is one
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point lastProgress = start;
};
