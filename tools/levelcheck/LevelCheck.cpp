// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/LevelCheck.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include "tools/levelcheck/BotWay.h"
#include "tools/levelcheck/Floors.h"
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
    if (isWhole) checkTraps();
    checkRandomPlayers();
}

void LevelCheck::explore() {
    const Search::End end = search.run(goals);
    out << "Searched with hands that hold a direction for " << shortestHold
        << " frames or more and press Action " << pressGap << " frames apart or more.\n"
        << search.getStates().size() << " states are told apart, by " << RunnerState::resolution()
        << ".\n";
    isWhole = end == Search::End::exhausted;
    if (!isWhole) {
        findings.error(
            "the level is too large to be searched to its end: what the search did not "
            "find (ways, goals, cells out of reach) is not proven, and traps were not looked for");
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
    listPlaces(near, true,
               "cells less than " + std::to_string(safeBorder) +
                   " tiles from the edge are reached near ");
    listPlaces(open, false,
               "cells less than " + std::to_string(border) +
                   " tiles from the edge are reached, and what lies outside may be "
                   "seen, near ");
    listPlaces(flames, true, "flames in the border, which can throw the runner through it, near ");
}

// A line for each place, but not too many.
void LevelCheck::listPlaces(const Places& places, bool wrong, const std::string& what) {
    std::size_t rest = 0;
    for (std::size_t i = 0; i < places.all().size(); ++i) {
        const Places::Place& place = places.all()[i];
        if (i >= namedPlaces) {
            rest += place.count;
            continue;
        }
        findings.add(wrong, what + zones.describe(place.column, place.row) + ": " +
                                std::to_string(place.count));
    }
    if (rest > 0) findings.add(wrong, what + "other places: " + std::to_string(rest));
}

// Open cells that were not passed: a place each for those that hang together, the largest first.
static Places findMissed(const LevelMap& map, const Search& search) {
    std::vector<bool> seen(std::size_t{map.getWidth()} * map.getHeight());
    const auto take = [&](int column, int row) {
        if (map.at(column, row) != LevelMap::empty || search.isPassed(column, row)) return false;
        auto mark =
            seen[static_cast<std::size_t>(row) * map.getWidth() + static_cast<std::size_t>(column)];
        const bool isNew = !mark;
        mark = true;
        return isNew;
    };
    std::vector<Places::Place> areas;
    std::vector<std::pair<int, int>> edge;
    forEachCell(map, [&](int column, int row) {
        if (!take(column, row)) return;
        areas.push_back({column, row, 0});
        edge.emplace_back(column, row);
        while (!edge.empty()) {
            const auto [x, y] = edge.back();
            edge.pop_back();
            ++areas.back().count;
            for (const auto& [nextX, nextY] : {std::pair(x + 1, y), std::pair(x - 1, y),
                                               std::pair(x, y + 1), std::pair(x, y - 1)}) {
                if (take(nextX, nextY)) edge.emplace_back(nextX, nextY);
            }
        }
    });
    std::stable_sort(areas.begin(), areas.end(),
                     [](const auto& one, const auto& other) { return one.count > other.count; });
    return Places(areas);
}

void LevelCheck::checkReach() {
    std::size_t open = 0, passed = 0;
    forEachCell(map, [&](int column, int row) {
        if (map.at(column, row) != LevelMap::empty) return;
        ++open;
        passed += search.isPassed(column, row) ? 1 : 0;
    });
    findings.require(share(passed, open) >= leastReached,
                     decimals(100 * share(passed, open), 2) + " % of " + std::to_string(open) +
                         " open cells can be reached (" + decimals(100 * leastReached, 0) +
                         " % wanted)");
    listPlaces(findMissed(map, search), false, "open cells out of reach from ");
}

void LevelCheck::checkGoals() {
    Places places;
    for (const auto& [cell, way] : goals.getOutside()) {
        places.add(cell.second, cell.first);
    }
    listPlaces(places, true, "cells outside the goal zones in which the goal can be reached near ");
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
    const Traps traps(search);
    for (std::size_t i = 0; i < traps.getEnds().all().size(); ++i) {
        const Places::Place& end = traps.getEnds().all()[i];
        const RunnerState& entrance = traps.getEntrances()[i];
        findings.error("the runner gets in and not out again near " +
                       zones.describe(end.column, end.row) + ", " + std::to_string(end.count) +
                       " states; the way in begins in " +
                       placeText(entrance.column(), entrance.row()));
    }
    const Floors floors(map, search);
    listPlaces(floors.getTraps(), true, "floors from which no way leads on near ");
    listPlaces(floors.getUnsure(), false, "floors from which no way on was found near ");
    if (traps.getEnds().all().empty() && floors.getTraps().all().empty()) {
        findings.require(true, "every state, and every one of " + std::to_string(floors.size()) +
                                   " floors, leads on to a goal or back to the start");
    }
}

void LevelCheck::checkRandomPlayers() {
    const RandomPlayers players(map);
    const double winners = static_cast<double>(players.getWinners()) / RandomPlayers::count;
    findings.require(winners < mostWinners,
                     decimals(100 * winners, 2) + " % of " + std::to_string(RandomPlayers::count) +
                         " random players reach the goal within 40 s (less than " +
                         decimals(100 * mostWinners, 1) + " % wanted)");
    listPlaces(players.getStuck(), true, "random players are stuck near ");
}

std::optional<Inputs> LevelCheck::runTo(const std::string& goal) const {
    const GoalPlaces::Way* way = goals.fastest(goal);
    if (!way) return std::nullopt;
    return calmed(map, search.inputsTo(way->state, way->stretch, way->frame));
}
