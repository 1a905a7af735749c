// SPDX-License-Identifier: Zlib
// Checks the picture of a level, for those who draw levels; see usage below.
#include <fstream>
#include <iostream>
#include <sstream>

#include "base/FilePath.h"
#include "tools/CommandLine.h"
#include "tools/levelcheck/BotWay.h"
#include "tools/levelcheck/LevelCheck.h"
#include "tools/levelcheck/LevelFile.h"
#include "tools/levelcheck/LevelPicture.h"
#include "tools/levelcheck/SceneCheck.h"
#include "tools/levelcheck/ScriptFile.h"

static constexpr const char* usage =
    "Usage: tarnwick-levelcheck LEVEL.png [options]\n"
    "Says what is wrong with a level, and where, and how fast a bot reaches the goal.\n"
    "  --zones FILE     names of its regions and its goal zones, see the manual page\n"
    "  --script FILE    write the bot's run as an input script for the replay tool\n"
    "  --to GOAL        the bot's run leads to this goal zone, not to the fastest\n"
    "  --through A,B,C  and through these zones, in this order\n"
    "  --picture FILE   write a picture (PNG) of the level with the bot's run\n"
    "  --scene          a level that nobody steers through, that of the epilogue\n";

static const CommandLine::KnownOptions options = {{"--zones", 1},   {"--script", 1},
                                                  {"--to", 1},      {"--through", 1},
                                                  {"--picture", 1}, {"--scene", 0}};

static constexpr std::streamsize longestZones = 1 << 20; // bytes

// Of a way by way of zones: beside the states of the checks they stay below 4 GiB.
static constexpr std::uint32_t mostWayStates = 30'000'000;

static std::runtime_error failure(const std::string& what) {
    return std::runtime_error(what);
}

static Zones readZones(const std::string& path) {
    Zones zones;
    if (path.empty()) return zones;
    std::ifstream file = FilePath(path).open();
    if (!file.is_open()) throw failure("no file " + path);
    std::string text(longestZones, ' ');
    file.read(text.data(), longestZones);
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (file) throw failure(path + " is too long");
    std::string problems;
    for (const std::string& problem : zones.read(text)) problems += "\n" + path + ", " + problem;
    if (!problems.empty()) throw failure("the zones are not right:" + problems);
    return zones;
}

static const Zone* findZone(const Zones& zones, const std::string& name) {
    const Zone* zone = zones.find(name);
    if (!zone) throw CommandLine::Error("no zone is named \"" + name + "\"");
    return zone;
}

static std::vector<const Zone*> readThrough(const Zones& zones, const std::string& list) {
    std::vector<const Zone*> through;
    std::istringstream names(list);
    std::string name;
    while (std::getline(names, name, ',')) through.push_back(findZone(zones, name));
    return through;
}

static void write(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) throw failure("cannot write " + path);
}

static void writePicture(const std::string& path, const LevelMap& map, const Inputs& inputs) {
    LevelPicture picture(map);
    picture.drawRun(Run(map, inputs).getPath());
    if (!picture.write(path)) throw failure("cannot write " + path);
}

static void runScene(const CommandLine& line, const LoadedImage& picture, Findings& findings) {
    checkScene(picture, findings);
    if (line.has("--picture")) writePicture(line.get("--picture", ""), LevelMap(picture), {});
}

// The run that was asked for, or none.
static Inputs findRun(const CommandLine& line, const Zones& zones, const LevelCheck& check,
                      Findings& findings) {
    const std::string goal = line.get("--to", "");
    const auto through = readThrough(zones, line.get("--through", ""));
    if (through.empty()) return check.runTo(goal);
    const BotWay way(check.getMap(), zones, mostWayStates);
    try {
        return calmed(check.getMap(), way.find(through, goal));
    } catch (const BotWay::Unreached& unreached) {
        findings.error(unreached.what());
        return {};
    }
}

static void runPlay(const CommandLine& line, const Zones& zones, const LoadedImage& picture,
                    Findings& findings) {
    LevelCheck check(picture, zones, findings, std::cout);
    check.run();
    if (!line.has("--script") && !line.has("--picture")) return;
    const Inputs inputs = findRun(line, zones, check, findings);
    if (line.has("--picture")) {
        writePicture(line.get("--picture", ""), check.getMap(), inputs);
    }
    if (line.has("--script") && !inputs.empty()) {
        write(line.get("--script", ""), scriptOf(inputs));
        std::cout << "In its script the epilogue begins in frame " << epilogueFrame(inputs)
                  << ".\n";
    }
}

// What names files or zones is read before the long work begins.
static Zones readOptions(const CommandLine& line) {
    if (line.getWordCount() != 1) throw CommandLine::Error("one level is wanted");
    if (line.has("--scene")) {
        for (const char* option : {"--zones", "--script", "--to", "--through"}) {
            if (line.has(option)) {
                throw CommandLine::Error(std::string(option) + " means nothing to a scene");
            }
        }
    }
    Zones zones = readZones(line.get("--zones", ""));
    const std::string goal = line.get("--to", "");
    if (!goal.empty() && !findZone(zones, goal)->goal) {
        throw CommandLine::Error(goal + " is no goal zone");
    }
    readThrough(zones, line.get("--through", ""));
    return zones;
}

// The exit status.
static int run(const CommandLine& line) {
    const Zones zones = readOptions(line);
    const LevelFile file(line.getWord(0));
    Findings findings;
    if (!file.getFault().empty()) {
        findings.error(file.getFault());
    } else if (line.has("--scene")) {
        runScene(line, file.getPicture(), findings);
    } else {
        runPlay(line, zones, file.getPicture(), findings);
    }
    findings.print(std::cout);
    return findings.hasErrors() ? 1 : 0;
}

int main(int argc, char* argv[]) {
    return runProgram(argc, argv, "tarnwick-levelcheck", usage, options, 2, run);
}
