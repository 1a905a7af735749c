// SPDX-License-Identifier: Zlib
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "game/LevelMap.h"
#include "game/WorldPoint.h"
#include "tools/levelcheck/Zones.h"

// Simulated first-time players, four minutes each, the same ones every time. They see only the view
// and react as late as people do; they go for what is open and new to them, like signs, and press
// Action by a wall. Shows where they lose time.
class Newcomers {
public:
    Newcomers(const LevelMap& level, const Zones& itsZones, unsigned playerCount);

    void print(std::ostream& target) const;

private:
    // Those who came to a region, and how long each needed to a region that is later in the zones.
    struct Region {
        unsigned came = 0;
        unsigned inTime = 0; // to get further before the end
        std::vector<double> seconds;
        std::map<std::string, unsigned> next; // the first region new to them after this one
    };
    struct Room {
        WorldPoint middle;
        unsigned lastHeld = 0; // the last player who was
        unsigned held = 0;     // players who stayed for long
    };

    void play(unsigned seed);
    Room& roomAt(WorldPoint place);

    const LevelMap& map;
    const Zones& zones;
    unsigned count;
    unsigned winners = 0;
    std::map<std::string, Region> regions;
    std::vector<Room> rooms;
};
