// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/LevelCheck.h"

#include <algorithm>
#include <set>

#include "tools/levelcheck/BotWay.h"
#include "tools/levelcheck/Floors.h"
#include "tools/levelcheck/PictureChecks.h"
#include "tools/levelcheck/Places.h"
#include "tools/levelcheck/RandomPlayers.h"
#include "tools/levelcheck/ReachChecks.h"
#include "tools/levelcheck/Traps.h"

static constexpr double framesPerSecond = 66;
static constexpr double shortestPlay = 40; // seconds of the bot's
static constexpr double longestPlay = 120;
static constexpr std::size_t fewestRegions = 5;
static constexpr double mostWinners = 0.005; // of the random players

static std::string seconds(std::size_t frames) {
    return decimals(static_cast<double>(frames) / framesPerSecond, 1) + " s";
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
    const ReachChecks reachChecks(map, search, zones, findings);
    reachChecks.checkBorder();
    reachChecks.checkReach();
    checkGoals();
    checkFastest();
    if (isWhole) checkTraps();
    checkRandomPlayers();
}

void LevelCheck::explore() {
    const Search::End end = search.run(goals);
    out << "Searched with hands that change the direction in every " << shortestHold
        << "th frame only, never hold two, and press Action " << pressGap
        << " frames apart or more.\n"
        << search.getStates().size() << " states are told apart, by " << RunnerState::resolution()
        << ".\n";
    isWhole = end == Search::End::exhausted;
    if (!isWhole) {
        findings.error(
            "the level is too large to be searched to its end: what the search did not "
            "find (ways, goals, cells out of reach) is not proven, and traps were not looked for");
    }
}

void LevelCheck::checkGoals() {
    Places places;
    for (const auto& [cell, way] : goals.getOutside()) {
        places.add(cell.second, cell.first);
    }
    findings.addPlaces(zones, places, true,
                       "cells outside the goal zones in which the goal can be reached near ");
    if (!zones.isEmpty() && places.all().empty()) {
        findings.require(true, "the goal is reached in the goal zones alone");
    }
    findings.addPlaces(
        zones, goals.getLucky(), false,
        "cells outside the goal zones in which one single frame gives the goal near ");
}

void LevelCheck::checkFastest() {
    const GoalPlaces::Way* fastest = goals.fastest("");
    if (!fastest) {
        findings.error("no way to the goal was found");
        return;
    }
    const Run run(map, runTo(""));
    const WorldPoint end = run.getPath().back();
    const double time = static_cast<double>(run.getLength() + 1) / framesPerSecond;
    out << "The bot reaches the goal in frame " << run.getLength() << " of the play, after "
        << seconds(run.getLength() + 1) << ", in " << zones.describe(cellOf(end.x), cellOf(end.y))
        << ".\n";
    findings.require(time >= shortestPlay && time <= longestPlay,
                     "the fastest way takes " + decimals(time, 1) + " s (" +
                         decimals(shortestPlay, 0) + " to " + decimals(longestPlay, 0) +
                         " s wanted)");
    checkGoalZones();
    if (!zones.isEmpty()) checkRegions(run);
}

void LevelCheck::checkGoalZones() {
    for (const Zone& zone : zones.all()) {
        if (!zone.goal) continue;
        const GoalPlaces::Way* way = goals.fastest(zone.name);
        out << "  goal " << zone.name << ": "
            << (way ? seconds(way->frames) : std::string("no way found")) << "\n";
        if (!way) findings.error("no way to the goal in " + zone.name);
    }
}

void LevelCheck::checkRegions(const Run& run) {
    std::set<std::string> names;
    std::string last;
    out << "Its way:";
    for (const WorldPoint place : run.getPath()) {
        const Zone* region = zones.regionAt(cellOf(place.x), cellOf(place.y));
        if (!region || region->name == last) continue;
        last = region->name;
        names.insert(last);
        out << " " << last;
    }
    out << "\n";
    findings.require(names.size() >= fewestRegions,
                     "the fastest way passes " + std::to_string(names.size()) + " regions (" +
                         std::to_string(fewestRegions) + " or more wanted)");
}

void LevelCheck::checkTraps() {
    const Traps traps(search);
    const std::vector<Places::Place>& ends = traps.getEnds().all();
    for (std::size_t i = 0; i < std::min(ends.size(), Findings::namedPlaces); ++i) {
        const RunnerState& entrance = traps.getEntrances()[i];
        findings.error("the runner gets in and not out again near " +
                       zones.describe(ends[i].column, ends[i].row) + "; the way in begins in " +
                       placeText(entrance.column(), entrance.row()));
    }
    if (ends.size() > Findings::namedPlaces) {
        findings.error("and so near " + std::to_string(ends.size() - Findings::namedPlaces) +
                       " other places");
    }
    if (traps.count() > 0) {
        findings.note(std::to_string(traps.count()) + " states lead neither to a goal nor back");
    }
    const Floors floors(map, search);
    findings.addPlaces(zones, floors.getTraps(), true, "floors from which no way leads on near ");
    findings.addPlaces(zones, floors.getUnsure(), false,
                       "floors from which no way on was found near ");
    if (ends.empty() && floors.getTraps().all().empty()) {
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
    findings.addPlaces(zones, players.getStuck(), true, "random players are stuck near ");
}

Inputs LevelCheck::runTo(const std::string& goal) const {
    const GoalPlaces::Way* way = goals.fastest(goal);
    if (!way) return {};
    return calmed(map, search.inputsTo(way->state, way->stretch, way->frame));
}
