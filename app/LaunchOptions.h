// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Settings;

// The options for window and sound. Without arguments they are the settings'; with any argument at
// all the settings are ignored. Main thread, at start-up.
struct LaunchOptions {
    // Prints the defaults that it chooses. Throws FatalError for --help, after printing the help.
    LaunchOptions(const std::vector<std::string>& arguments, const Settings& settings);

    std::int32_t width = 0;        // pixels
    std::int32_t height = 0;       // pixels
    std::int32_t antialiasing = 0; // samples
    bool fullscreen = true;
    bool noSound = false;
    bool noMusic = false;
    std::string audioApi;

private:
    void take(const Settings& settings);
    void take(const std::vector<std::string>& arguments);
};
