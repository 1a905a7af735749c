// SPDX-License-Identifier: Zlib
#include "app/LaunchOptions.h"

#include <algorithm>
#include <iostream>
#include <sstream>

#include "app/FatalError.h"
#include "app/Settings.h"
#include "platform/Platform.h"

static constexpr const char* help =
    "\n"
    "Tarnwick Episode\n"
    "\n"
    "Usage:\n"
    "Tarnwick.exe -w [width] -h [height] -a [val] win -ns -nm -aa [name]\n"
    "\n"
    "Flags:\n"
    "--width [val] | -w [val]:\tSet the width of the window.\n"
    "--height [val] | -h [val]:\tSet the height of the window.\n"
    "--antialias [val] | -a [val]:\tSets the antialiasing level (2, 4, or 6).\n"
    "--windowed | -win:\t\tSets whether to start the game in a window rather than fullscreen.\n"
    "--nosound | -ns:\t\tSwitches off the sound output.\n"
    "--nomusic | -nm:\t\tSwitches off the background music.\n"
    "--audio-api [name] | -aa [name]:\t\tSets the audio API to use.  Can be DirectSound, ASIO, "
    "MME, ALSA, JACK, OSS, CoreAudio.\n"
    "--help:\t\t\t\tDisplay this help.";

static constexpr std::int32_t leastAntialiasing = 2; // samples, if the option is given

using Arguments = std::vector<std::string>;

static bool has(const Arguments& arguments, const std::string& option) {
    return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
}

// Calls take(value) for each argument that follows one of the two names. The value itself is not
// checked for a name.
template <typename Take>
static void forEachValue(const Arguments& arguments, const std::string& name,
                         const std::string& shortName, Take take) {
    for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == name || arguments[i] == shortName) take(arguments[++i]);
    }
}

LaunchOptions::LaunchOptions(const Arguments& arguments, const Settings& settings) {
    if (arguments.empty()) {
        take(settings);
    } else {
        take(arguments);
    }
}

void LaunchOptions::take(const Settings& settings) {
    width = settings.width;
    height = settings.height;
    antialiasing = std::max(settings.antialias, 0);
    fullscreen = settings.fullscreen;
    noSound = settings.noSound;
    noMusic = settings.noMusic;
    audioApi = settings.audioApi;
}

void LaunchOptions::take(const Arguments& arguments) {
    if (has(arguments, "--help")) {
        std::cout << help << std::endl;
        throw FatalError{"\n"};
    }
    // All numbers go through one stream. Text that does not parse stays in it, ahead of later
    // numbers.
    std::stringstream numbers;
    const auto numberInto = [&numbers](std::int32_t& target) {
        return [&numbers, &target](const std::string& value) {
            std::int32_t number = 0;
            numbers << value;
            if (numbers >> number) target = number;
            numbers.clear();
        };
    };
    forEachValue(arguments, "--width", "-w", numberInto(width));
    if (width == 0) {
        width = Platform::primaryScreenSize().width;
        std::cout << "Using default width = " << width << std::endl;
    }
    forEachValue(arguments, "--height", "-h", numberInto(height));
    if (height == 0) {
        height = Platform::primaryScreenSize().height;
        std::cout << "Using default height = " << height << std::endl;
    }
    fullscreen = !has(arguments, "--windowed") && !has(arguments, "-win");
    noSound = has(arguments, "--nosound") || has(arguments, "-ns");
    noMusic = has(arguments, "--nomusic") || has(arguments, "-nm");
    forEachValue(arguments, "--audio-api", "-aa",
                 [this](const std::string& value) { audioApi = value; });
    forEachValue(arguments, "--antialias", "-a", numberInto(antialiasing));
    const bool wantsAntialiasing = has(arguments, "--antialias") || has(arguments, "-a");
    if (wantsAntialiasing && antialiasing < leastAntialiasing) {
        antialiasing = leastAntialiasing;
        std::cout << "Using 2x antialiasing." << std::endl;
    }
}
