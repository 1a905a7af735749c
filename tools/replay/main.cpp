// SPDX-License-Identifier: Zlib
// Plays an input script on the real game and records what happens; see usage below.
#include <algorithm>
#include <limits>
#include <sstream>

#include "tools/CommandLine.h"
#include "tools/replay/Replay.h"

static constexpr const char* usage =
    "Usage: replay --script FILE [options] [-- arguments of the game]\n"
    "  --script FILE      the input: frames, held keys, presses, and the end\n"
    "  --trace FILE       write the runner's position, speed and flags for each frame\n"
    "  --pictures FOLDER  write pictures (PNG) into this folder, named by their frame:\n"
    "  --every N            every Nth frame\n"
    "  --frames A,B,C       these frames\n"
    "  --sound FILE       write the sound (16-bit WAV)\n"
    "  --pitches FILE     play the music on these pitches\n"
    "  --seed N           start of the random numbers (1)\n"
    "Without arguments the game gets -win -w 1280 -h 720. It never opens a sound device.\n";

static const CommandLine::KnownOptions options = {
    {"--script", 1}, {"--trace", 1}, {"--pictures", 1}, {"--every", 1},
    {"--frames", 1}, {"--sound", 1}, {"--pitches", 1},  {"--seed", 1}};

static std::uint32_t readNumber(const char* option, const std::string& text) {
    return CommandLine::readNumber<std::uint32_t>(option, text, 0,
                                                  std::numeric_limits<std::uint32_t>::max());
}

static Replay::Options readOptions(const CommandLine& line) {
    Replay::Options chosen;
    chosen.script = line.get("--script", "");
    chosen.trace = line.get("--trace", "");
    chosen.pictures = line.get("--pictures", "");
    chosen.every = readNumber("--every", line.get("--every", "0"));
    chosen.sound = line.get("--sound", "");
    chosen.pitches = line.get("--pitches", "");
    chosen.seed = readNumber("--seed", line.get("--seed", "1"));
    std::istringstream frames(line.get("--frames", ""));
    for (std::string frame; std::getline(frames, frame, ',');) {
        chosen.frames.insert(readNumber("--frames", frame));
    }
    if (line.getWordCount() > 0) throw CommandLine::Error("unknown argument " + line.getWord(0));
    if (chosen.script.empty()) throw CommandLine::Error("no --script");
    const bool namesFrames = chosen.every > 0 || !chosen.frames.empty();
    if (namesFrames && chosen.pictures.empty()) throw CommandLine::Error("no --pictures");
    if (!namesFrames && !chosen.pictures.empty()) {
        throw CommandLine::Error("--pictures needs --every or --frames");
    }
    return chosen;
}

int main(int argc, char* argv[]) {
    char** const end = argv + argc;
    char** const dashes = std::find(argv, end, std::string("--"));
    return runProgram(static_cast<int>(dashes - argv), argv, "replay", usage, options, 1,
                      [&](const CommandLine& line) {
                          Replay::Options chosen = readOptions(line);
                          if (dashes != end) chosen.gameArguments.assign(dashes + 1, end);
                          Replay(chosen).play();
                          return 0;
                      });
}
