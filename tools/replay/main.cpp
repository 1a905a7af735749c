// SPDX-License-Identifier: Zlib
// Checks runs of the game, and plays them again; see usage below.
#include <algorithm>
#include <iostream>
#include <limits>
#include <sstream>

#include "base/FilePath.h"
#include "tools/CommandLine.h"
#include "tools/replay/RunCheck.h"
#include "tools/replay/RunLevel.h"
#include "tools/replay/TraceRun.h"

static constexpr const char* usage =
    "Usage: tarnwick-replay check FILE... [options]   does each run reach the goal, and when?\n"
    "       tarnwick-replay trace FILE [options] [-- arguments of the game]\n"
    "                                                 what happens in a run, frame by frame\n"
    "FILE is a run: the keys of a player, frame by frame. Options of all commands:\n"
    "  --level FILE       play on this level (PNG)\n"
    "  --data FOLDER      take the level, fonts, patches and tunes from this folder\n"
    "  --help, --version  print this text, or the version\n"
    "check:\n"
    "  --json             print JSON\n"
    "trace:\n"
    "  --output FILE      write the runner's position, speed and flags for each frame\n"
    "  --pictures FOLDER  write pictures (PNG) into this folder, named by their frame:\n"
    "  --every N            every Nth frame\n"
    "  --frames A,B,C       these frames\n"
    "  --sound FILE       write the sound (16-bit WAV)\n"
    "  --pitches FILE     play the music on these pitches\n"
    "  --seed N           start of the random numbers\n"
    "Without arguments a traced game gets -win -w 1280 -h 720. It never opens a sound device.\n"
    "Exit status: 0 done, 1 failed or a run is not what its header claims, 2 wrong use.\n";

static const CommandLine::KnownOptions options = {
    {"--level", 1}, {"--data", 1},   {"--json", 0},  {"--output", 1},  {"--pictures", 1},
    {"--every", 1}, {"--frames", 1}, {"--sound", 1}, {"--pitches", 1}, {"--seed", 1}};

static constexpr std::size_t mostFiles = 1'000'000;

static std::uint32_t readNumber(const char* option, const std::string& text) {
    return CommandLine::readNumber<std::uint32_t>(option, text, 0,
                                                  std::numeric_limits<std::uint32_t>::max());
}

static RunLevel readLevel(const CommandLine& line) {
    GameRun::setDataFolder(line.get("--data", ""));
    return RunLevel(line.get("--level", GameRun::dataFolder() + "/levels/episode1.png"));
}

static GameRun::Options readGameOptions(const CommandLine& line, const InputScript& script,
                                        const std::vector<std::string>& gameArguments) {
    GameRun::Options chosen;
    chosen.level = line.get("--level", "");
    chosen.pitches = line.get("--pitches", "");
    chosen.seed = script.getHeader().seed;
    if (line.has("--seed")) chosen.seed = readNumber("--seed", line.get("--seed", ""));
    chosen.gameArguments = gameArguments;
    if (!chosen.pitches.empty() && !FilePath(chosen.pitches).isOrdinaryFile()) {
        throw std::runtime_error("cannot read " + chosen.pitches);
    }
    return chosen;
}

static TraceRun::Outputs readOutputs(const CommandLine& line) {
    TraceRun::Outputs chosen;
    chosen.trace = line.get("--output", "");
    chosen.pictures = line.get("--pictures", "");
    chosen.every = readNumber("--every", line.get("--every", "0"));
    chosen.sound = line.get("--sound", "");
    std::istringstream frames(line.get("--frames", ""));
    for (std::string frame; std::getline(frames, frame, ',');) {
        chosen.frames.insert(readNumber("--frames", frame));
    }
    const bool namesFrames = chosen.every > 0 || !chosen.frames.empty();
    if (namesFrames && chosen.pictures.empty()) throw CommandLine::Error("no --pictures");
    if (!namesFrames && !chosen.pictures.empty()) {
        throw CommandLine::Error("--pictures needs --every or --frames");
    }
    return chosen;
}

static int check(const CommandLine& line) {
    const RunLevel level = readLevel(line);
    std::vector<RunCheck> checks;
    bool good = true;
    for (std::size_t i = 1; i < line.getWordCount(); ++i) {
        checks.push_back(RunCheck::of(line.getWord(i), level));
        good = good && checks.back().problem.empty();
        if (!line.has("--json")) std::cout << checks.back().line(level) << "\n";
    }
    if (line.has("--json")) std::cout << RunCheck::json(checks, level);
    return good ? 0 : 1;
}

static int trace(const CommandLine& line, const std::vector<std::string>& gameArguments) {
    const TraceRun::Outputs outputs = readOutputs(line);
    const InputScript script = InputScript::fromFile(line.getWord(1));
    const GameRun::Options game = readGameOptions(line, script, gameArguments);
    const RunLevel level = readLevel(line);
    TraceRun(script, level, game, outputs).play();
    return 0;
}

static int run(const CommandLine& line, const std::vector<std::string>& gameArguments) {
    if (line.isCommand("check", 2, mostFiles, {"--level", "--data", "--json"})) {
        return check(line);
    }
    if (line.isCommand("trace", 2,
                       {"--level", "--data", "--output", "--pictures", "--every", "--frames",
                        "--sound", "--pitches", "--seed"})) {
        return trace(line, gameArguments);
    }
    throw CommandLine::Error("unknown command " + line.getWord(0));
}

int main(int argc, char* argv[]) {
    char** const end = argv + argc;
    char** const dashes = std::find(argv, end, std::string("--"));
    const std::vector<std::string> gameArguments(dashes == end ? end : dashes + 1, end);
    return runProgram(static_cast<int>(dashes - argv), argv, "tarnwick-replay", usage, options, 1,
                      [&](const CommandLine& line) { return run(line, gameArguments); });
}
