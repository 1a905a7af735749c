// SPDX-License-Identifier: Zlib
#pragma once

#include <ostream>
#include <string>

#include "drawing/LoadedImage.h"
#include "tools/levelcheck/Findings.h"
#include "tools/levelcheck/GoalPlaces.h"
#include "tools/levelcheck/Search.h"

// All checks of a level that is played, one after the other, and the fastest run that they find.
class LevelCheck {
public:
    // Prints what it measures to `target` at once; what is wrong goes to the findings.
    LevelCheck(const LevelMap& level, const Zones& itsZones, Findings& itsFindings,
               std::ostream& target);

    // All of them, for a level whose start is empty.
    void run();

    // The fastest run to the goal zone of that name, "" for any; empty if none was found.
    Inputs runTo(const std::string& goal) const;

private:
    void explore();
    void checkCells();
    void checkGoals();
    void checkFastest();
    void checkRegions();
    void checkDeadEnds();
    void checkRandomPlayers();
    void addPlaces(Findings::Kind kind, const Places& places, const std::string& what) {
        findings.addPlaces(kind, zones, places, what);
    }

    const LevelMap& map;
    const Zones& zones;
    Findings& findings;
    std::ostream& out;
    Search search;
    GoalPlaces goals;
    bool isWhole = false; // the search went to its end
};

// Checks the scene after the play, in which nobody steers and whose start is empty: the runner
// lands in time, after the vortex and before the text, and then stays at rest.
void checkScene(const LevelMap& map, Findings& findings);
