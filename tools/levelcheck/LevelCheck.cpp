// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/LevelCheck.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include "tools/levelcheck/BotWay.h"
#include "tools/levelcheck/PictureChecks.h"
#include "tools/levelcheck/Places.h"
#include "tools/levelcheck/RandomPlayers.h"
#include "tools/levelcheck/Traps.h"

static constexpr double framesPerSecond = 66;
static constexpr int border = 12;          // tiles that keep the outside out of view
static constexpr int safeBorder = 3;       // tiles that no flight passes
static constexpr double shortestPlay = 40; // seconds of the bot's
static constexpr double longestPlay = 120;
static constexpr std::size_t fewestRegions = 5;
static constexpr double leastReached = 0.97; // of the open cells
static constexpr double mostWinners = 0.005; // of the random players
static constexpr std::size_t namedPlaces = 8;

static std::string decimals(double number, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, number);
    return text;
}

static std::string seconds(std::size_t frames) {
    return decimals(static_cast<double>(frames) / framesPerSecond, 1) + " s";
}

static double share(std::size_t part, std::size_t whole) {
    return whole == 0 ? 1 : static_cast<double>(part) / static_cast<double>(whole);
}

LevelCheck::LevelCheck(const LoadedImage& level, const Zones& itsZones, Findings& itsFindings,
                       std::ostream& target)
    : picture(level), zones(itsZones), findings(itsFindings), out(target), map(level),
      search(map, BotWay::firstInputs(), mostStates), goals(map, zones) {}

void LevelCheck::run() {
    PictureChecks pictureChecks(picture, map, Run::start, findings);
    pictureChecks.checkPixels();
    if (!pictureChecks.checkStart()) return;
    pictureChecks.checkGround();
    explore();
    checkBorder();
    checkReach();
    checkGoals();
    checkFastest();
    checkTraps();
    checkRandomPlayers();
}

void LevelCheck::explore() {
    const Search::End end = search.run(goals);
    out << "Searched with hands that hold a direction for " << shortestHold
        << " frames or more and press Action " << pressGap << " frames apart or more.\n"
        << search.getStates().size() << " states are told apart, by " << RunnerState::resolution()
        << ".\n";
    if (end == Search::End::full) {
        findings.error("the level is too large to be searched to its end: what the search did not "
                       "find (ways, goals, traps, cells out of reach) is not proven");
    }
}

// Calls visit(column, row) for each cell, in reading order.
template <typename Visit>
static void forEachCell(const LevelMap& map, Visit visit) {
    for (int row = 0; row < static_cast<int>(map.getHeight()); ++row) {
        for (int column = 0; column < static_cast<int>(map.getWidth()); ++column) {
            visit(column, row);
        }
    }
}

static int distanceToEdge(const LevelMap& map, int column, int row) {
    return std::min({column, row, static_cast<int>(map.getWidth()) - 1 - column,
                     static_cast<int>(map.getHeight()) - 1 - row});
}

void LevelCheck::checkBorder() {
    Places open, near, flames;
    forEachCell(map, [&](int column, int row) {
        const int distance = distanceToEdge(map, column, row);
        if (distance >= border) return;
        const bool passed = search.isPassed(column, row);
        if (passed) (distance < safeBorder ? near : open).add(column, row);
        if (map.at(column, row) == LevelMap::flame) flames.add(column, row);
    });
    if (search.isOutsidePassed()) findings.error("the runner can leave the picture");
    for (const Places::Place& place : near.all()) {
        findings.error("the runner comes within " + std::to_string(safeBorder) +
                       " tiles of the edge: " + zones.describe(place.column, place.row));
    }
    for (const Places::Place& place : open.all()) {
        findings.note(
            "the border is thinner than " + std::to_string(border) +
            " tiles, and what is outside may be seen: " + zones.describe(place.column, place.row));
    }
    for (const Places::Place& place : flames.all()) {
        findings.error("a flame in the border could throw the runner through it: " +
                       zones.describe(place.column, place.row));
    }
}

void LevelCheck::checkReach() {
    std::size_t open = 0, passed = 0;
    Places missed;
    forEachCell(map, [&](int column, int row) {
        if (map.at(column, row) != LevelMap::empty) return;
        ++open;
        if (search.isPassed(column, row)) {
            ++passed;
        } else {
            missed.add(column, row);
        }
    });
    findings.require(share(passed, open) >= leastReached,
                     decimals(100 * share(passed, open), 2) + " % of " + std::to_string(open) +
                         " open cells can be reached (" + decimals(100 * leastReached, 0) +
                         " % wanted)");
    std::vector<Places::Place> places = missed.all();
    std::stable_sort(places.begin(), places.end(),
                     [](const auto& one, const auto& other) { return one.count > other.count; });
    if (places.size() > namedPlaces) places.resize(namedPlaces);
    for (const Places::Place& place : places) {
        findings.note(std::to_string(place.count) + " open cells out of reach near " +
                      zones.describe(place.column, place.row));
    }
}

void LevelCheck::checkGoals() {
    Places places;
    for (const auto& [cell, way] : goals.getOutside()) {
        places.add(cell.second, cell.first);
    }
    for (const Places::Place& place : places.all()) {
        findings.error("the goal can be reached outside the goal zones, in " +
                       std::to_string(place.count) + " cells near " +
                       zones.describe(place.column, place.row));
    }
    if (!zones.isEmpty() && places.all().empty()) {
        findings.require(true, "the goal is reached in the goal zones alone");
    }
    if (const std::size_t lucky = goals.countLuckyCells()) {
        findings.note("the goal falls by luck, a kick in one single frame, in " +
                      std::to_string(lucky) + " cells");
    }
}

void LevelCheck::checkFastest() {
    const GoalPlaces::Way* fastest = goals.fastest("");
    if (!fastest) {
        findings.error("no way to the goal was found");
        return;
    }
    const std::optional<Inputs> inputs = runTo("");
    const Run run(map, *inputs);
    std::vector<std::string> passed;
    std::set<std::string> names;
    for (const WorldPoint place : run.getPath()) {
        const Zone* region = zones.regionAt(cellOf(place.x), cellOf(place.y));
        if (!region || (!passed.empty() && passed.back() == region->name)) continue;
        passed.push_back(region->name);
        names.insert(region->name);
    }
    out << "The bot reaches the goal in frame " << run.getLength() << " of the play, after "
        << seconds(run.getLength() + 1) << ", in "
        << zones.describe(cellOf(run.getPath().back().x), cellOf(run.getPath().back().y)) << ".\n";
    const double time = static_cast<double>(run.getLength() + 1) / framesPerSecond;
    findings.require(time >= shortestPlay && time <= longestPlay,
                     "the fastest way takes " + decimals(time, 1) + " s (" +
                         decimals(shortestPlay, 0) + " to " + decimals(longestPlay, 0) +
                         " s wanted)");
    for (const Zone& zone : zones.all()) {
        if (!zone.goal) continue;
        const GoalPlaces::Way* way = goals.fastest(zone.name);
        out << "  goal " << zone.name << ": "
            << (way ? seconds(way->frames) : std::string("no way found")) << "\n";
        if (!way) findings.error("no way to the goal in " + zone.name);
    }
    if (zones.isEmpty()) return;
    out << "Its way:";
    for (const std::string& name : passed) out << " " << name;
    out << "\n";
    findings.require(names.size() >= fewestRegions,
                     "the fastest way passes " + std::to_string(names.size()) + " regions (" +
                         std::to_string(fewestRegions) + " or more wanted)");
}

void LevelCheck::checkTraps() {
    const Places traps = findTraps(search);
    for (const Places::Place& place : traps.all()) {
        findings.error("the runner gets in and not out again: " + std::to_string(place.count) +
                       " states near " + zones.describe(place.column, place.row));
    }
    if (traps.all().empty()) {
        findings.require(true, "every state leads on to a goal or back to the start");
    }
}

void LevelCheck::checkRandomPlayers() {
    const RandomPlayers players(map);
    const double winners = static_cast<double>(players.getWinners()) / RandomPlayers::count;
    findings.require(winners < mostWinners,
                     decimals(100 * winners, 2) + " % of " + std::to_string(RandomPlayers::count) +
                         " random players reach the goal within 40 s (less than " +
                         decimals(100 * mostWinners, 1) + " % wanted)");
    for (const Places::Place& place : players.getStuck().all()) {
        findings.error(std::to_string(place.count) + " random players are stuck near " +
                       zones.describe(place.column, place.row));
    }
}

std::optional<Inputs> LevelCheck::runTo(const std::string& goal) const {
    const GoalPlaces::Way* way = goals.fastest(goal);
    if (!way) return std::nullopt;
    return calmed(map, search.inputsTo(way->state, way->stretch, way->frame));
}
