// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/LevelCheck.h"

#include <algorithm>
#include <cstdlib>
#include <random>
#include <set>

#include "tools/levelcheck/DeadEnds.h"
#include "tools/levelcheck/GoalPlaces.h"
#include "tools/levelcheck/Search.h"

static constexpr int border = 12;    // tiles that hide what lies outside
static constexpr int safeBorder = 3; // tiles that no flight passes

// Of the random players.
static constexpr unsigned randomPlayers = 2000;
static constexpr int winSeconds = 40;
static constexpr int playFrames = framesIn(600);
static constexpr int stuckFrames = framesIn(60); // in one place
static constexpr int longestKeys = 40;           // frames until other keys are held
static constexpr int pressChance = 10; // frames from press to press beyond the gap, on average

// Of a scene, in frames.
static constexpr int earliestLanding = 60;
static constexpr int latestLanding = 120;
static constexpr int sceneFrames = 600; // the last text comes in frame 300
static constexpr int restFrames = 60;   // from the landing until the runner is at rest

static std::string secondsText(std::size_t frames) {
    return decimals(secondsOf(frames), 1) + " s";
}

static Places cellsOf(const std::vector<Search::Goal>& goals) {
    Places places;
    for (const Search::Goal& goal : goals) places.add(goal.column, goal.row);
    return places;
}

// A simulated player pressing random keys, the same every time: whether he wins soon. Adds where he
// gets stuck.
static bool winsRandomly(const LevelMap& map, unsigned seed, Places& stuck) {
    std::mt19937 generator(seed);
    const auto random = [&](int end) { // 0 to end - 1
        return static_cast<int>(generator() % static_cast<unsigned>(end));
    };
    Player player(playStart);
    HeldKeys held;
    int keys = 0; // frames for which they are still held
    int wait = 0, still = 0;
    int column = 0, row = 0; // the cell near which the runner has been for `still` frames
    for (int frame = 0; frame < playFrames && still < stuckFrames; ++frame, ++still) {
        if (keys-- == 0) {
            keys = shortestHold - 1 + random(longestKeys - shortestHold + 1);
            const int set = random(4);
            held.left = (set & 1) != 0;
            held.right = (set & 2) != 0;
        }
        if (--wait <= 0 && random(pressChance) == 0) {
            player.requestKick();
            wait = pressGap;
        }
        player.update(held, map);
        if (player.kickSpeed() >= goalSpeed) return frame < framesIn(winSeconds);
        const int x = cellOf(player.position().x), y = cellOf(player.position().y);
        if (std::abs(x - column) <= 1 && std::abs(y - row) <= 1) continue;
        column = x;
        row = y;
        still = 0;
    }
    if (still >= stuckFrames) stuck.add(column, row);
    return false;
}

// How near the runner comes to the edge of the picture, and how much of the open space he reaches.
static void checkCells(const LevelMap& map, const Search& search, Findings& findings) {
    Places visible, near, flames, missed;
    double open = 0, passed = 0;
    const int width = static_cast<int>(map.getWidth()), height = static_cast<int>(map.getHeight());
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const int toEdge = std::min({column, row, width - 1 - column, height - 1 - row});
            const bool isPassed = search.isPassed(column, row);
            if (isPassed && toEdge < border)
                (toEdge < safeBorder ? near : visible).add(column, row);
            const std::uint8_t code = map.at(column, row);
            if (code == LevelMap::flame && toEdge < border) flames.add(column, row);
            if (code != LevelMap::empty) continue;
            open += 1;
            passed += isPassed ? 1 : 0;
            if (!isPassed) missed.add(column, row);
        }
    }
    if (search.isOutsidePassed()) findings.addError("the runner can leave the picture");
    findings.addPlaces(Findings::error, near,
                       "the runner comes within " + std::to_string(safeBorder) +
                           " tiles of the edge near ");
    findings.addPlaces(Findings::note, visible,
                       "the runner comes within " + std::to_string(border) +
                           " tiles of the edge, so that the outside may be visible, near ");
    findings.addPlaces(Findings::error, flames,
                       "flames in the border, which can throw the runner through it, near ");
    const double openShare = 100 * open / (double{1} * width * height),
                 reached = 100 * passed / open;
    findings.measure("open", openShare, decimals(openShare, 1) + " % of all cells are open");
    findings.measure("reached", reached,
                     decimals(reached, 2) + " % of " + decimals(open, 0) +
                         " open cells can be reached");
    findings.addPlaces(Findings::note, missed, "open cells out of reach near ");
}

static void checkGoals(const GoalPlaces& goals, const Zones& zones, Findings& findings) {
    const auto outside = goals.getOutside(false), flukes = goals.getOutside(true);
    findings.addPlaces(Findings::error, cellsOf(outside),
                       "the goal can be reached outside the goal zones in cells near ");
    if (zones.hasGoals() && outside.empty()) {
        findings.add(Findings::good,
                     "except by a fluke the goal is reached only in the goal zones");
    }
    findings.addPlaces(Findings::note, cellsOf(flukes),
                       "only a fluke, a press in one single frame, reaches the goal outside the "
                       "goal zones in cells near ");
    if (flukes.empty()) return;
    findings.add(Findings::note, "the earliest fluke takes " + secondsText(flukes[0].frames) +
                                     ", to " + zones.describe(flukes[0].column, flukes[0].row));
}

static void checkFastest(const GoalPlaces& goals, const Zones& zones, Findings& findings,
                         std::ostream& out) {
    const Search::Goal* fastest = goals.fastest("");
    if (!fastest) return findings.addError("no path to the goal was found");
    out << "The fastest path reaches the goal in frame " << fastest->frames - 1
        << " of the play, after " << secondsText(fastest->frames) << ", in "
        << zones.describe(fastest->column, fastest->row) << ".\n";
    for (const Zone& zone : zones.all()) {
        if (!zone.goal) continue;
        const Search::Goal* goal = goals.fastest(zone.name);
        out << "  goal " << zone.name << ": "
            << (goal ? secondsText(goal->frames) : std::string("no path found")) << "\n";
        if (!goal) findings.addError("no path to the goal in " + zone.name + " was found");
    }
    findings.measure("seconds", secondsOf(fastest->frames),
                     "the fastest path takes " + secondsText(fastest->frames));
}

static void checkRegions(const LevelMap& map, const Inputs& inputs, const Zones& zones,
                         Findings& findings, std::ostream& out) {
    std::set<std::string> names;
    std::string last, list;
    const Run run(map, inputs);
    for (const WorldPoint place : run.path) {
        const Zone* region = zones.regionAt(cellOf(place.x), cellOf(place.y));
        if (!region || region->name == last) continue;
        last = region->name;
        names.insert(last);
        list += " " + last;
    }
    if (!names.empty()) out << "Its regions:" << list << "\n";
    findings.measure("regions", static_cast<double>(names.size()),
                     "the fastest path visits " + std::to_string(names.size()) + " regions");
}

static void checkRandomPlayers(const LevelMap& map, Findings& findings) {
    Places stuck;
    double winners = 0; // percent
    for (unsigned seed = 1; seed <= randomPlayers; ++seed) {
        if (winsRandomly(map, seed, stuck)) winners += 100.0 / randomPlayers;
    }
    findings.measure("winners", winners,
                     decimals(winners, 2) + " % of " + std::to_string(randomPlayers) +
                         " random players reach the goal within " + std::to_string(winSeconds) +
                         " s");
    findings.addPlaces(Findings::error, stuck, "random players get stuck near ");
}

Inputs checkLevel(const LevelMap& map, const Zones& zones, const std::string& goal,
                  Findings& findings, std::ostream& target) {
    Search search(map);
    GoalPlaces goals(map, zones);
    const bool isWhole =
        search.run([&](const Search::Goal& reached) { goals.add(search, reached); },
                   [](std::uint32_t) { return false; });
    target << "Found " << search.getStates().size() << " states of the runner.\n";
    if (!isWhole) {
        findings.addError("the level is too large to be searched completely: paths, goals and "
                          "reachable cells may be missing, and dead ends were not looked for");
    }
    const auto runTo = [&](const std::string& zone) {
        const Search::Goal* fastest = goals.fastest(zone);
        return fastest ? simplified(map, search.inputsTo(*fastest)) : Inputs();
    };
    checkCells(map, search, findings);
    checkGoals(goals, zones, findings);
    checkFastest(goals, zones, findings, target);
    if (goals.fastest("") && !zones.all().empty()) {
        checkRegions(map, runTo(""), zones, findings, target);
    }
    if (isWhole) checkDeadEnds(map, search, zones, findings);
    checkRandomPlayers(map, findings);
    return runTo(goal);
}

bool checkPicture(const LoadedImage& picture, const LevelMap& map, WorldPoint start,
                  Findings& findings) {
    static constexpr std::uint8_t codes[] = {0x00, 0x20, 0x40, 0x60, 0x80, 0xFE, 0xE0, 0xFF};
    Places unknown, coloured;
    const std::uint8_t* pixel = picture.pixels.get();
    for (int y = 0; y < static_cast<int>(picture.height); ++y) {
        for (int x = 0; x < static_cast<int>(picture.width); ++x, pixel += 4) {
            if (std::find(std::begin(codes), std::end(codes), *pixel) == std::end(codes)) {
                unknown.add(x, y);
            }
            if (pixel[0] != pixel[1] || pixel[0] != pixel[2]) coloured.add(x, y);
        }
    }
    findings.addPlaces(Findings::note, unknown, "unknown tile codes, drawn like 0x20, near ");
    findings.addPlaces(Findings::note, coloured,
                       "pixels that are not grey, of which only the red counts, near ");
    const int column = cellOf(start.x), row = cellOf(start.y);
    if (map.at(column, row) == LevelMap::empty) return true;
    findings.addError((map.contains(column, row)
                           ? "the start is not empty: "
                           : "the picture is too small to contain the start, ") +
                      placeText(column, row));
    return false;
}

void checkScene(const LevelMap& map, Findings& findings) {
    Player player(epilogueStart);
    int landing = 0, lastMotion = 0;
    for (int frame = 1; frame <= sceneFrames; ++frame) {
        const WorldPoint before = player.position();
        player.update(HeldKeys(), map);
        const WorldPoint after = player.position();
        if (before.x != after.x || before.y != after.y || player.isAirborne()) lastMotion = frame;
        if (landing == 0 && !player.isAirborne()) landing = frame;
    }
    findings.require(landing >= earliestLanding && landing <= latestLanding,
                     landing == 0 ? "the runner never lands"
                                  : "the runner lands in frame " + std::to_string(landing) +
                                        " (expected " + std::to_string(earliestLanding) + "-" +
                                        std::to_string(latestLanding) + ")");
    const WorldPoint end = player.position();
    findings.require(lastMotion <= landing + restFrames,
                     lastMotion == sceneFrames
                         ? "the runner never comes to rest"
                         : "the runner is at rest from frame " + std::to_string(lastMotion + 1) +
                               " on, in " + placeText(cellOf(end.x), cellOf(end.y)));
}
