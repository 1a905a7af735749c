// SPDX-License-Identifier: Zlib
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/levelcheck/GoalPlaces.h"

// Finds ways by way of zones. Leg by leg, each from the exact end of the one before.
class BotWay {
public:
    // A zone or the goal was not reached; what() names it.
    struct Unreached : std::runtime_error {
        using runtime_error::runtime_error;
    };

    BotWay(const LevelMap& level, const Zones& itsZones, std::uint32_t mostStates)
        : map(level), zones(itsZones), limit(mostStates) {}

    // Inputs that lead through these zones in their order to a goal zone, "" for any.
    Inputs find(const std::vector<const Zone*>& through, const std::string& goal) const;

    // What a hand does before a search begins: nothing, since the title's last key is hardly up.
    static Inputs firstInputs() { return Inputs(8); }

private:
    Inputs reach(const Zone& zone, const Inputs& before) const;

    const LevelMap& map;
    const Zones& zones;
    std::uint32_t limit;
};
