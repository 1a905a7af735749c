// SPDX-License-Identifier: Zlib
#pragma once

#include <ostream>

#include "game/LevelMap.h"
#include "tools/levelcheck/Zones.h"

// Simulates first-time players, four minutes each, the same ones every time, and prints where they
// lose time. They see only the view and react as late as people do; they go for what is open and
// new to them, like signs, and press Action by a wall.
void simulateNewcomers(const LevelMap& map, const Zones& zones, unsigned count,
                       std::ostream& target);
