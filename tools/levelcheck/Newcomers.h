// SPDX-License-Identifier: Zlib
#pragma once

#include <ostream>

#include "game/LevelMap.h"
#include "tools/levelcheck/Zones.h"

// Simulates first-time players, four minutes each, the same ones every time, and prints where they
// lose time. They see only the view, react as late as people do, and go for what is open and new.
void simulateNewcomers(const LevelMap& map, const Zones& zones, unsigned count,
                       std::ostream& target);
