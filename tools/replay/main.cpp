// SPDX-License-Identifier: Zlib
// Plays an input script on the real game and writes down what happens; see usage below.
#include <charconv>
#include <iostream>
#include <map>
#include <sstream>

#include "tools/replay/Replay.h"

static constexpr const char* usage =
    "Usage: replay --script FILE [options] [-- arguments of the game]\n"
    "  --script FILE      the input: frames, held keys, presses, and the end\n"
    "  --trace FILE       write the runner's place, speed and flags for each frame\n"
    "  --pictures FOLDER  write pictures (PNG) there, named by their frame:\n"
    "  --every N            every Nth frame\n"
    "  --frames A,B,C       these frames\n"
    "  --sound FILE       write what is heard (16-bit WAV)\n"
    "  --pitches FILE     play the music on these pitches\n"
    "  --seed N           start of the random numbers (1)\n"
    "Without arguments the game gets -win -w 1280 -h 720; it never opens a sound device.\n";

static const std::map<std::string, std::string Replay::Options::*> textOptions = {
    {"--script", &Replay::Options::script},     {"--trace", &Replay::Options::trace},
    {"--pictures", &Replay::Options::pictures}, {"--sound", &Replay::Options::sound},
    {"--pitches", &Replay::Options::pitches},
};

static bool readNumber(const std::string& text, std::uint32_t& number) {
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    return problem == std::errc() && end == text.data() + text.size();
}

static bool readNumbers(const std::string& text, std::set<std::uint32_t>& numbers) {
    std::istringstream parts(text);
    std::string part;
    while (std::getline(parts, part, ',')) {
        std::uint32_t number = 0;
        if (!readNumber(part, number)) return false;
        numbers.insert(number);
    }
    return !numbers.empty();
}

static bool readOption(const std::string& name, const std::string& value,
                       Replay::Options& options) {
    if (name == "--every") return readNumber(value, options.every);
    if (name == "--frames") return readNumbers(value, options.frames);
    if (name == "--seed") return readNumber(value, options.seed);
    const auto text = textOptions.find(name);
    if (text == textOptions.end()) return false;
    options.*text->second = value;
    return true;
}

static bool readOptions(const std::vector<std::string>& arguments, Replay::Options& options) {
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        if (arguments[i] == "--") {
            options.gameArguments.assign(arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                         arguments.end());
            break;
        }
        if (i + 1 == arguments.size()) return false;
        if (!readOption(arguments[i], arguments[i + 1], options)) return false;
    }
    const bool wantsPictures = options.every > 0 || !options.frames.empty();
    return !options.script.empty() && wantsPictures == !options.pictures.empty();
}

int main(int argc, char* argv[]) {
    Replay::Options options;
    if (!readOptions({argv + 1, argv + argc}, options)) {
        std::cerr << usage;
        return 2;
    }
    std::string failure;
    if (Replay(options).play(failure)) return 0;
    std::cerr << "replay: " << failure << std::endl;
    return 1;
}
