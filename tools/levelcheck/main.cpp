// SPDX-License-Identifier: Zlib
// Checks the picture of a level, for authors of levels; see usage below.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "base/FilePath.h"
#include "drawing/ImageLoader.h"
#include "tools/CommandLine.h"
#include "tools/levelcheck/GoalPlaces.h"
#include "tools/levelcheck/LevelCheck.h"
#include "tools/levelcheck/LevelPicture.h"
#include "tools/levelcheck/Newcomers.h"
#include "tools/replay/RunLevel.h"

static constexpr const char* usage =
    "Usage: tarnwick-levelcheck LEVEL.png [options]\n"
    "       tarnwick-levelcheck --new FOLDER\n"
    "Reports what is wrong with a level and where, and how fast its goal can be reached.\n"
    "  --new FOLDER     make a copy of the game whose levels, patches and tunes you can change\n"
    "  --zones FILE     regions, goal zones and wanted measures of the level; see the manual page\n"
    "  --script FILE    write the fastest run to a file for tarnwick-replay\n"
    "  --to GOAL        use the fastest run to this goal zone instead\n"
    "  --through A,B,C  make the run pass these zones first, in this order\n"
    "  --picture FILE   write a picture (PNG) of the level with this run\n"
    "  --newcomers N    simulate N first-time players instead, and print where they lose time\n"
    "  --scene          check the level of the epilogue, in which nobody steers\n"
    "  --help, --version  print this text, or the version\n";

static const CommandLine::KnownOptions options = {
    {"--zones", 1},   {"--script", 1}, {"--to", 1},        {"--through", 1},
    {"--picture", 1}, {"--scene", 0},  {"--newcomers", 1}, {"--new", 1}};

static constexpr std::size_t longestZones = 1 << 20; // bytes

static void requireFile(const std::string& path) {
    if (!FilePath(path).isOrdinaryFile()) throw std::runtime_error("no such file: " + path);
}

static Zones readZones(const std::string& path) {
    Zones zones;
    if (path.empty()) return zones;
    requireFile(path);
    const std::string text = FilePath(path).readStart(longestZones + 1);
    if (text.size() > longestZones) throw std::runtime_error(path + " is too long");
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
    if (!writeLevelPicture(path, map, Run(map, inputs).path)) {
        throw std::runtime_error("cannot write " + path);
    }
}

static void writeScript(const CommandLine& line, const LevelMap& map, const Inputs& inputs) {
    if (!line.has("--script") || inputs.empty()) return;
    InputScript::Header header;
    header.game = programVersion();
    header.level = std::filesystem::path(line.getWord(0)).filename();
    header.levelHash = RunLevel::hashOf(map);
    header.player = "levelcheck";
    const std::string path = line.get("--script", "");
    std::ofstream file(path, std::ios::binary);
    file << scriptOf(inputs, RunLevel::headerText(header));
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path);
    std::cout << "In the script the epilogue begins in frame " << epilogueFrame(inputs) << ".\n";
}

static void runPlay(const CommandLine& line, const Zones& zones, const LevelMap& map,
                    Findings& findings) {
    if (line.has("--newcomers")) {
        const std::string count = line.get("--newcomers", "");
        return simulateNewcomers(
            map, zones, CommandLine::readNumber("--newcomers", count, 1U, 10000U), std::cout);
    }
    const std::string goal = line.get("--to", "");
    Inputs inputs = checkLevel(map, zones, goal, findings, std::cout);
    if (line.has("--through")) {
        const auto through = readThrough(zones, line.get("--through", ""));
        inputs = simplified(map, pathThrough(map, zones, through, goal, findings));
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

static void refuse(const CommandLine& line, const std::string& with,
                   const std::vector<std::string>& excluded) {
    for (const std::string& option : excluded) {
        if (line.has(with) && line.has(option)) {
            throw CommandLine::Error(with + " has no option " + option);
        }
    }
}

// Reads whatever names files or zones, before the long work begins.
static Zones readOptions(const CommandLine& line) {
    if (line.getWordCount() != 1) throw CommandLine::Error("expected one level file");
    refuse(line, "--scene", {"--zones", "--script", "--to", "--through", "--newcomers"});
    refuse(line, "--newcomers", {"--script", "--to", "--through", "--picture"});
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
    requireFile(line.getWord(0));
    const LoadedImage picture = ImageLoader().loadFromFile(line.getWord(0));
    const LevelMap map(picture);
    Findings findings(zones);
    if (!picture.pixels) {
        findings.addError("the game cannot read the picture: save it as PNG, RGB, 8 bits a "
                          "channel, with at most 65535 pixels a side and 67108864 in all");
    } else if (checkPicture(picture, map, isScene ? epilogueStart : playStart, findings)) {
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
