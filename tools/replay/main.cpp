// SPDX-License-Identifier: Zlib
// Keeps runs of the game, checks them, plays them again and films them; see usage below.
#include <algorithm>
#include <iomanip>
#include <iostream>
#include <limits>
#include <sstream>
#include <string_view>

#include "base/FilePath.h"
#include "platform/Platform.h"
#include "tools/CommandLine.h"
#include "tools/replay/FilmRun.h"
#include "tools/replay/Ghosts.h"
#include "tools/replay/RecordRun.h"
#include "tools/replay/RunCheck.h"
#include "tools/replay/RunLevel.h"
#include "tools/replay/RunLink.h"
#include "tools/replay/TraceRun.h"
#include "tools/replay/WatchRun.h"

static constexpr const char* usage =
    "Usage: tarnwick-replay record [FILE] [options]   play, and keep the run\n"
    "       tarnwick-replay watch FILE [options]      show a run; any key ends it\n"
    "       tarnwick-replay check FILE... [options]   does each run reach the goal, and when?\n"
    "       tarnwick-replay race FILE... [options]    play beside up to 8 runs, and keep the run\n"
    "       tarnwick-replay film FILE FILM [options]  make a film: .mp4, .webm, or .gif\n"
    "       tarnwick-replay trace FILE [options]      what happens in a run, frame by frame\n"
    "       tarnwick-replay link FILE [options]       print a run as a link, or the text of a "
    "link\n"
    "FILE is a run: the keys of a player, frame by frame, or a link to one in quotes. Arguments\n"
    "after -- go to the game.\n"
    "Options of all commands but link:\n"
    "  --level FILE       play on this level (PNG)\n"
    "  --data FOLDER      take the level, fonts, patches and tunes from this folder\n"
    "all commands but link and check:\n"
    "  --pitches FILE     play the music on these pitches\n"
    "  --seed N           seed of the random numbers\n"
    "record, race:\n"
    "  --player NAME      write this name into the file\n"
    "race:\n"
    "  --into FILE        keep the run in this file\n"
    "watch:\n"
    "  --speed N          play at N times the game's own speed, 0.1 to 10\n"
    "  --from FRAME       skip the frames before this one\n"
    "check:\n"
    "  --json             print JSON\n"
    "film:\n"
    "  --size WxH         in pixels, 1280x720 if not given\n"
    "  --ghosts A,B,C     with these runs as ghosts\n"
    "  --frames FOLDER    write PNG pictures and a WAV file instead of a film\n"
    "trace:\n"
    "  --output FILE      write the runner's position, speed and flags for each frame\n"
    "  --pictures FOLDER  write pictures (PNG) into this folder, named by their frame:\n"
    "  --every N            every Nth frame\n"
    "  --frames A,B,C       these frames\n"
    "  --sound FILE       write the sound (16-bit WAV)\n"
    "link:\n"
    "  --page ADDRESS     address of the page with the game, instead of the project's own\n"
    "tarnwick-replay --help, --version: print this text, or the version\n"
    "Exit status: 0 done, 1 failed or a run is not what its header claims, 2 invalid command "
    "line.\n";

static const CommandLine::KnownOptions options = {
    {"--level", 1},  {"--data", 1},   {"--json", 0},  {"--output", 1},  {"--pictures", 1},
    {"--every", 1},  {"--frames", 1}, {"--sound", 1}, {"--pitches", 1}, {"--seed", 1},
    {"--player", 1}, {"--speed", 1},  {"--from", 1},  {"--into", 1},    {"--size", 1},
    {"--ghosts", 1}, {"--page", 1}};

using Arguments = std::vector<std::string>;

static constexpr std::size_t mostFiles = 1'000'000;

static Arguments splitAtCommas(const std::string& text) {
    Arguments parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, ',');) parts.push_back(part);
    return parts;
}

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
    for (const std::string& frame : splitAtCommas(line.get("--frames", ""))) {
        chosen.frames.insert(readNumber("--frames", frame));
    }
    const bool namesFrames = chosen.every > 0 || !chosen.frames.empty();
    if (namesFrames && chosen.pictures.empty()) {
        throw CommandLine::Error("--every and --frames need --pictures");
    }
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

static Ghosts readGhosts(const Arguments& files, const RunLevel& level) {
    if (files.size() > Ghosts::most) {
        throw CommandLine::Error("at most " + std::to_string(Ghosts::most) + " runs can be ghosts");
    }
    Ghosts ghosts;
    for (const std::string& file : files) ghosts.add(file, level);
    return ghosts;
}

// Records a play into this file, or into a new one if none is named.
static RunResult play(const CommandLine& line, std::string file, const RunLevel& level,
                      Ghosts& ghosts, const Arguments& gameArguments) {
    const auto now = static_cast<std::uint32_t>(Platform::calendarSeconds());
    const GameRun::Options game = readGameOptions(line, now, gameArguments);
    if (file.empty()) file = RunWriter::newPath();
    RecordRun run(file, line.get("--player", ""), level, game);
    run.setGhosts(ghosts);
    run.play();
    std::cout << file << ": " << run.getResult().text() << std::endl;
    return run.getResult();
}

static int record(const CommandLine& line, const Arguments& gameArguments) {
    const RunLevel level = readLevel(line);
    Ghosts none;
    play(line, line.getWordCount() > 1 ? line.getWord(1) : "", level, none, gameArguments);
    return 0;
}

static int race(const CommandLine& line, const Arguments& gameArguments) {
    const RunLevel level = readLevel(line);
    Arguments files;
    for (std::size_t i = 1; i < line.getWordCount(); ++i) files.push_back(line.getWord(i));
    Ghosts ghosts = readGhosts(files, level);
    std::vector<RunCheck> checks(1);
    checks[0].player = "this run";
    checks[0].result = play(line, line.get("--into", ""), level, ghosts, gameArguments);
    for (const std::string& file : files) checks.push_back(RunCheck::of(file, level));
    std::cout << RunCheck::table(checks);
    return 0;
}

static int watch(const CommandLine& line, const Arguments& gameArguments) {
    const double speed = CommandLine::readNumber("--speed", line.get("--speed", "1"), 0.1, 10.0);
    const std::uint32_t from = readNumber("--from", line.get("--from", "0"));
    const InputScript script = RunLink::read(line.getWord(1));
    const RunLevel level = readLevel(line);
    GameRun::Options game = readGameOptions(line, script.getHeader().seed, gameArguments);
    if (game.gameArguments.empty()) game.gameArguments = {"-win", "-w", "1280", "-h", "720"};
    WatchRun run(script, level, game, speed, from);
    run.play();
    std::cout << std::fixed << std::setprecision(1) << run.framesPerSecond() << " frames a second"
              << std::endl;
    std::cout << RunLink::nameOf(line.getWord(1)) << ": " << run.getResult().text() << std::endl;
    return 0;
}

// Width and height, 16 to 8192 each. The formats of films need even numbers.
static std::pair<int, int> readSize(const std::string& text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos) throw CommandLine::Error("--size needs WIDTHxHEIGHT");
    const int width = CommandLine::readNumber("the width", text.substr(0, cross), 16, 8192);
    const int height = CommandLine::readNumber("the height", text.substr(cross + 1), 16, 8192);
    if (width % 2 != 0 || height % 2 != 0) {
        throw CommandLine::Error("the width and the height of a film must be even");
    }
    return {width, height};
}

static int film(const CommandLine& line) {
    const auto [width, height] = readSize(line.get("--size", "1280x720"));
    const bool pictures = line.has("--frames");
    if (pictures == (line.getWordCount() > 2)) {
        throw CommandLine::Error("film takes either the name of the film or --frames");
    }
    if (!pictures && !FilmFile::knows(line.getWord(2))) {
        throw CommandLine::Error("the name of a film ends in .mp4, .webm or .gif");
    }
    const InputScript script = RunLink::read(line.getWord(1));
    const RunLevel level = readLevel(line);
    const GameRun::Options game =
        readGameOptions(line, script.getHeader().seed,
                        {"-win", "-w", std::to_string(width), "-h", std::to_string(height)});
    Ghosts ghosts = readGhosts(splitAtCommas(line.get("--ghosts", "")), level);
    if (pictures) {
        const std::string folder = line.get("--frames", "");
        TraceRun run(script, level, game, {"", folder, 1, {}, folder + "/sound.wav"});
        run.setGhosts(ghosts);
        run.play();
        std::cout << folder << ": " << run.getResult().text() << std::endl;
        return 0;
    }
    FilmRun run(script, level, game, line.getWord(2), width, height);
    run.setGhosts(ghosts);
    run.play();
    std::cout << line.getWord(2) << ": " << run.getResult().text() << std::endl;
    return 0;
}

static int trace(const CommandLine& line, const Arguments& gameArguments) {
    const TraceRun::Outputs outputs = readOutputs(line);
    const InputScript script = RunLink::read(line.getWord(1));
    const RunLevel level = readLevel(line);
    TraceRun(script, level, readGameOptions(line, script.getHeader().seed, gameArguments), outputs)
        .play();
    return 0;
}

// A control character that a terminal would obey; blanks are harmless.
static bool isObeyed(char letter) {
    constexpr std::string_view blanks = "\t\n\v\f\r";
    return (static_cast<unsigned char>(letter) < ' ' && blanks.find(letter) == blanks.npos) ||
           letter == '\x7F';
}

static int link(const CommandLine& line) {
    const std::string& file = line.getWord(1);
    RunLink::read(file); // refuses a broken run
    if (RunLink::isLink(file)) {
        std::string text = RunLink::textOf(file);
        std::replace_if(text.begin(), text.end(), isObeyed, '?'); // comments may contain anything
        std::cout << text << std::flush;
        return 0;
    }
    std::ostringstream text;
    text << FilePath(file).open().rdbuf();
    const std::string written = RunLink::of(text.str()); // may throw, so before the page is printed
    std::cout << line.get("--page", TARNWICK_SITE "/play/") << written << std::endl;
    return 0;
}

// The options of a command that runs the game: those of all such commands, and its own.
static Arguments withGameOptions(Arguments itsOptions) {
    itsOptions.insert(itsOptions.end(), {"--level", "--data", "--pitches", "--seed"});
    return itsOptions;
}

static int run(const CommandLine& line, const Arguments& gameArguments) {
    if (line.isCommand("record", 1, 2, withGameOptions({"--player"}))) {
        return record(line, gameArguments);
    }
    if (line.isCommand("watch", 2, withGameOptions({"--speed", "--from"}))) {
        return watch(line, gameArguments);
    }
    if (line.isCommand("race", 2, mostFiles, withGameOptions({"--player", "--into"}))) {
        return race(line, gameArguments);
    }
    if (line.isCommand("film", 2, 3, withGameOptions({"--size", "--ghosts", "--frames"}))) {
        return film(line);
    }
    if (line.isCommand("check", 2, mostFiles, {"--level", "--data", "--json"})) {
        return check(line);
    }
    if (line.isCommand(
            "trace", 2,
            withGameOptions({"--output", "--pictures", "--every", "--frames", "--sound"}))) {
        return trace(line, gameArguments);
    }
    if (line.isCommand("link", 2, {"--page"})) return link(line);
    throw CommandLine::Error("unknown command " + line.getWord(0));
}

int main(int argc, char* argv[]) {
    char** const end = argv + argc;
    char** const dashes = std::find(argv, end, std::string("--"));
    const Arguments gameArguments(dashes == end ? end : dashes + 1, end);
    return runProgram(static_cast<int>(dashes - argv), argv, "tarnwick-replay", usage, options, 1,
                      [&](const CommandLine& line) { return run(line, gameArguments); });
}
