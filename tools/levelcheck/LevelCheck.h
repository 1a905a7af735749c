// SPDX-License-Identifier: Zlib
#pragma once

#include <ostream>

#include "drawing/LoadedImage.h"
#include "tools/levelcheck/Findings.h"
#include "tools/levelcheck/GoalPlaces.h"
#include "tools/levelcheck/Run.h"
#include "tools/levelcheck/Search.h"
#include "tools/levelcheck/Zones.h"

// All checks of a level that is played, one behind the other, and the bot's run, which they find.
class LevelCheck {
public:
    // Prints what it measures to `target` at once; what is wrong goes to the findings.
    LevelCheck(const LoadedImage& level, const Zones& itsZones, Findings& itsFindings,
               std::ostream& target);

    void run();

    // The fastest run to the goal zone of that name, "" for any; empty: there is none.
    Inputs runTo(const std::string& goal) const;

    const LevelMap& getMap() const { return map; }

    // The memory of a search stays below 4 GiB with so many states.
    static constexpr std::uint32_t mostStates = 40'000'000;

private:
    void explore();
    void checkGoals();
    void checkFastest();
    void checkGoalZones();
    void checkRegions(const Run& run);
    void checkTraps();
    void checkRandomPlayers();

    const LoadedImage& picture;
    const Zones& zones;
    Findings& findings;
    std::ostream& out;
    LevelMap map;
    Search search;
    GoalPlaces goals;
    bool isWhole = false; // the search went to its end
};
