// SPDX-License-Identifier: Zlib
// Checks the picture of a level, for authors of levels; see usage below.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "base/FilePath.h"
#include "tools/CommandLine.h"
#include "tools/levelcheck/LevelCheck.h"
#include "tools/levelcheck/LevelFile.h"
#include "tools/levelcheck/LevelPicture.h"
#include "tools/levelcheck/Newcomers.h"
#include "tools/replay/RunLevel.h"

static constexpr const char* usage =
    "Usage: tarnwick-levelcheck LEVEL.png [options]\n"
    "       tarnwick-levelcheck --new FOLDER\n"
    "Reports what is wrong with a level, and where, and how fast the goal can be reached.\n"
    "  --new FOLDER     make a copy of the game whose levels, patches and tunes you can change\n"
    "  --zones FILE     its regions, its goal zones and what is wanted of it, see the manual page\n"
    "  --script FILE    write the fastest run as a run for tarnwick-replay\n"
    "  --to GOAL        use the fastest run to this goal zone instead\n"
    "  --through A,B,C  and let it pass these zones in this order\n"
    "  --picture FILE   write a picture (PNG) of the level with this run\n"
    "  --newcomers N    simulate N first-time players instead, and print where they lose time\n"
    "  --scene          check a level in which nobody steers, that of the epilogue\n";

static const CommandLine::KnownOptions options = {
    {"--zones", 1},   {"--script", 1}, {"--to", 1},        {"--through", 1},
    {"--picture", 1}, {"--scene", 0},  {"--newcomers", 1}, {"--new", 1}};

static constexpr std::streamsize longestZones = 1 << 20; // bytes

// Of a path through zones: with the states of the checks they take less than 4 GiB.
static constexpr std::uint32_t mostPathStates = 30'000'000;

static Zones readZones(const std::string& path) {
    Zones zones;
    if (path.empty()) return zones;
    std::ifstream file = FilePath(path).open();
    if (!file.is_open()) throw std::runtime_error("no such file: " + path);
    std::string text(longestZones, ' ');
    file.read(text.data(), longestZones);
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (file) throw std::runtime_error(path + " is too long");
    std::string problems;
    for (const std::string& problem : zones.read(text)) problems += "\n" + path + ", " + problem;
    if (!problems.empty()) throw std::runtime_error("invalid zones:" + problems);
    return zones;
}

static std::vector<const Zone*> readThrough(const Zones& zones, const std::string& list) {
    std::vector<const Zone*> through;
    std::istringstream names(list);
    for (std::string name; std::getline(names, name, ',');) {
        through.push_back(zones.find(name));
        if (!through.back()) throw CommandLine::Error("no zone is named \"" + name + "\"");
    }
    return through;
}

static void writePicture(const CommandLine& line, const LevelMap& map, const Inputs& inputs) {
    if (!line.has("--picture")) return;
    const std::string path = line.get("--picture", "");
    LevelPicture picture(map);
    picture.drawRun(Run(map, inputs).path);
    if (!picture.write(path)) throw std::runtime_error("cannot write " + path);
}

static std::string headerFor(const std::string& level, const LevelMap& map) {
    InputScript::Header header;
    header.game = programVersion();
    header.level = std::filesystem::path(level).filename();
    header.levelHash = RunLevel::hashOf(map);
    header.player = "levelcheck";
    return RunLevel::headerText(header);
}

static void writeScript(const CommandLine& line, const LevelMap& map, const Inputs& inputs) {
    if (!line.has("--script") || inputs.empty()) return;
    const std::string path = line.get("--script", "");
    std::ofstream file(path, std::ios::binary);
    file << scriptOf(inputs, headerFor(line.getWord(0), map));
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path);
    std::cout << "In its script the epilogue begins in frame " << epilogueFrame(inputs) << ".\n";
}

static void runPlay(const CommandLine& line, const Zones& zones, const LevelMap& map,
                    Findings& findings) {
    if (line.has("--newcomers")) {
        const std::string count = line.get("--newcomers", "");
        Newcomers(map, zones, CommandLine::readNumber("--newcomers", count, 1U, 10000U))
            .print(std::cout);
        return;
    }
    LevelCheck check(map, zones, findings, std::cout);
    check.run();
    if (!line.has("--script") && !line.has("--picture")) return;
    const std::string goal = line.get("--to", "");
    const auto through = readThrough(zones, line.get("--through", ""));
    Inputs inputs;
    if (through.empty()) {
        inputs = check.runTo(goal);
    } else {
        inputs = pathThrough(map, zones, through, goal, mostPathStates, findings);
        inputs = simplified(map, inputs);
    }
    writePicture(line, map, inputs);
    writeScript(line, map, inputs);
}

// Copies the game's folder, in which links are resolved.
static void makeCopy(const std::string& folder) {
    namespace fs = std::filesystem;
    const fs::path game = FilePath::getDataDirectory().text();
    if (fs::exists(folder)) throw std::runtime_error(folder + " exists already");
    std::error_code problem;
    fs::create_directories(folder, problem);
    for (const char* part : {"tarnwick", "tarnwick-levelcheck", "tarnwick-render",
                             "tarnwick-replay", "levels", "fonts", "synthPatches", "pitches"}) {
        if (problem || !fs::exists(game / part)) continue; // only what is installed
        fs::copy(game / part, folder / fs::path(part), fs::copy_options::recursive, problem);
    }
    if (problem) throw std::runtime_error("cannot make " + folder + ": " + problem.message());
    std::cout << "Change the files in " << folder << ", and start " << folder << "/tarnwick.\n";
}

// Reads whatever names files or zones, before the long work begins.
static Zones readOptions(const CommandLine& line) {
    if (line.getWordCount() != 1) throw CommandLine::Error("expected one level file");
    for (const char* option : {"--zones", "--script", "--to", "--through"}) {
        if (line.has("--scene") && line.has(option)) {
            throw CommandLine::Error("--scene has no option " + std::string(option));
        }
    }
    Zones zones = readZones(line.get("--zones", ""));
    for (const Zone* zone : readThrough(zones, line.get("--to", ""))) {
        if (!zone->goal) throw CommandLine::Error(zone->name + " is not a goal zone");
    }
    readThrough(zones, line.get("--through", ""));
    return zones;
}

// The exit status.
static int run(const CommandLine& line) {
    if (line.isAlone("--new")) {
        makeCopy(line.get("--new", ""));
        return 0;
    }
    const Zones zones = readOptions(line);
    const bool isScene = line.has("--scene");
    Findings findings;
    const LoadedImage picture = loadLevel(line.getWord(0), findings);
    const LevelMap map(picture);
    const WorldPoint start = isScene ? epilogueStart : playStart;
    if (picture.pixels && checkPicture(picture, map, start, zones, findings)) {
        if (isScene) {
            checkScene(map, findings);
            writePicture(line, map, {});
        } else {
            runPlay(line, zones, map, findings);
        }
    }
    findings.print(std::cout);
    return findings.hasErrors() ? 1 : 0;
}

int main(int argc, char* argv[]) {
    return runProgram(argc, argv, "tarnwick-levelcheck", usage, options, 2, run);
}
