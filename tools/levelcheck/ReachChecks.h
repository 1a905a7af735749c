// SPDX-License-Identifier: Zlib
#pragma once

#include "game/LevelMap.h"
#include "tools/levelcheck/Findings.h"
#include "tools/levelcheck/Search.h"
#include "tools/levelcheck/Zones.h"

// What the cells say that a search passed, and those that it did not.
class ReachChecks {
public:
    ReachChecks(const LevelMap& level, const Search& whole, const Zones& itsZones, Findings& target)
        : map(level), search(whole), zones(itsZones), findings(target) {}

    // How near the runner comes to the edge of the picture.
    void checkBorder() const;

    // How much of the open space can be reached.
    void checkReach() const;

private:
    const LevelMap& map;
    const Search& search;
    const Zones& zones;
    Findings& findings;
};
