// SPDX-License-Identifier: Zlib
// Keeps runs of the game, checks them and plays them again; see usage below.
#include <algorithm>
#include <iostream>
#include <limits>
#include <sstream>

#include "base/FilePath.h"
#include "platform/Platform.h"
#include "tools/CommandLine.h"
#include "tools/replay/RecordRun.h"
#include "tools/replay/RunCheck.h"
#include "tools/replay/RunLevel.h"
#include "tools/replay/TraceRun.h"
#include "tools/replay/WatchRun.h"

static constexpr const char* usage =
    "Usage: tarnwick-replay record [FILE] [options]   play, and keep the run\n"
    "       tarnwick-replay watch FILE [options]      show a run; any key ends it\n"
    "       tarnwick-replay check FILE... [options]   does each run reach the goal, and when?\n"
    "       tarnwick-replay trace FILE [options]      what happens in a run, frame by frame\n"
    "FILE is a run: the keys of a player, frame by frame. Arguments after -- go to the game.\n"
    "Options of all commands:\n"
    "  --level FILE       play on this level (PNG)\n"
    "  --data FOLDER      take the level, fonts, patches and tunes from this folder\n"
    "  --pitches FILE     play the music on these pitches\n"
    "  --seed N           start of the random numbers\n"
    "  --help, --version  print this text, or the version\n"
    "record:\n"
    "  --player NAME      write this name into the file\n"
    "watch:\n"
    "  --speed N          times the game's own speed, 0.1 to 10\n"
    "  --from FRAME       skip the frames before this one\n"
    "check:\n"
    "  --json             print JSON\n"
    "trace:\n"
    "  --output FILE      write the runner's position, speed and flags for each frame\n"
    "  --pictures FOLDER  write pictures (PNG) into this folder, named by their frame:\n"
    "  --every N            every Nth frame\n"
    "  --frames A,B,C       these frames\n"
    "  --sound FILE       write the sound (16-bit WAV)\n"
    "Exit status: 0 done, 1 failed or a run is not what its header claims, 2 wrong use.\n";

static const CommandLine::KnownOptions options = {
    {"--level", 1},  {"--data", 1},   {"--json", 0},  {"--output", 1},  {"--pictures", 1},
    {"--every", 1},  {"--frames", 1}, {"--sound", 1}, {"--pitches", 1}, {"--seed", 1},
    {"--player", 1}, {"--speed", 1},  {"--from", 1}};

using Arguments = std::vector<std::string>;

// The options of a command: those of all commands that run the game, and its own.
static Arguments withGameOptions(Arguments itsOptions) {
    itsOptions.insert(itsOptions.end(), {"--level", "--data", "--pitches", "--seed"});
    return itsOptions;
}

static constexpr std::size_t mostFiles = 1'000'000;

static std::uint32_t readNumber(const char* option, const std::string& text) {
    return CommandLine::readNumber<std::uint32_t>(option, text, 0,
                                                  std::numeric_limits<std::uint32_t>::max());
}

static RunLevel readLevel(const CommandLine& line) {
    GameRun::setDataFolder(line.get("--data", ""));
    return RunLevel(line.get("--level", GameRun::dataFolder() + "/levels/episode1.png"));
}

static GameRun::Options readGameOptions(const CommandLine& line, std::uint32_t seed,
                                        const Arguments& gameArguments) {
    GameRun::Options chosen;
    chosen.level = line.get("--level", "");
    chosen.pitches = line.get("--pitches", "");
    chosen.seed = seed;
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

// A tune of the game, by the seed.
static std::string pickTune(std::uint32_t seed) {
    const FilePath folder = FilePath(GameRun::dataFolder()).join("pitches");
    Arguments tunes;
    for (std::uint32_t i = 0; i < folder.getEntryCount(); ++i) {
        const FilePath entry = folder.getEntry(i);
        if (entry.isOrdinaryFile() && entry.getExtension() == "txt") tunes.push_back(entry.text());
    }
    std::sort(tunes.begin(), tunes.end()); // the folder's order differs between machines
    return tunes.empty() ? "" : tunes[seed % tunes.size()];
}

static int record(const CommandLine& line, const Arguments& gameArguments) {
    const RunLevel level = readLevel(line);
    const auto now = static_cast<std::uint32_t>(Platform::calendarSeconds());
    GameRun::Options game = readGameOptions(line, now, gameArguments);
    if (game.pitches.empty()) game.pitches = pickTune(game.seed);
    const std::string file = line.getWordCount() > 1 ? line.getWord(1) : RunWriter::newPath();
    RecordRun run(file, line.get("--player", ""), level, game);
    run.play();
    std::cout << file << ": " << run.getResult().text() << std::endl;
    return 0;
}

static int watch(const CommandLine& line, const Arguments& gameArguments) {
    const double speed = CommandLine::readNumber("--speed", line.get("--speed", "1"), 0.1, 10.0);
    const std::uint32_t from = readNumber("--from", line.get("--from", "0"));
    const InputScript script = InputScript::fromFile(line.getWord(1));
    const RunLevel level = readLevel(line);
    GameRun::Options game = readGameOptions(line, script.getHeader().seed, gameArguments);
    if (game.gameArguments.empty()) game.gameArguments = {"-win", "-w", "1280", "-h", "720"};
    WatchRun run(script, level, game, speed, from);
    run.play();
    std::cout << line.getWord(1) << ": " << run.getResult().text() << std::endl;
    return 0;
}

static int trace(const CommandLine& line, const Arguments& gameArguments) {
    const TraceRun::Outputs outputs = readOutputs(line);
    const InputScript script = InputScript::fromFile(line.getWord(1));
    const RunLevel level = readLevel(line);
    TraceRun(script, level, readGameOptions(line, script.getHeader().seed, gameArguments), outputs)
        .play();
    return 0;
}

static int run(const CommandLine& line, const Arguments& gameArguments) {
    if (line.isCommand("record", 1, 2, withGameOptions({"--player"}))) {
        return record(line, gameArguments);
    }
    if (line.isCommand("watch", 2, withGameOptions({"--speed", "--from"}))) {
        return watch(line, gameArguments);
    }
    if (line.isCommand("check", 2, mostFiles, {"--level", "--data", "--json"})) {
        return check(line);
    }
    if (line.isCommand(
            "trace", 2,
            withGameOptions({"--output", "--pictures", "--every", "--frames", "--sound"}))) {
        return trace(line, gameArguments);
    }
    throw CommandLine::Error("unknown command " + line.getWord(0));
}

int main(int argc, char* argv[]) {
    char** const end = argv + argc;
    char** const dashes = std::find(argv, end, std::string("--"));
    const Arguments gameArguments(dashes == end ? end : dashes + 1, end);
    return runProgram(static_cast<int>(dashes - argv), argv, "tarnwick-replay", usage, options, 1,
                      [&](const CommandLine& line) { return run(line, gameArguments); });
}
