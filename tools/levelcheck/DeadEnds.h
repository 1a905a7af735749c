// SPDX-License-Identifier: Zlib
#pragma once

#include "tools/levelcheck/Findings.h"
#include "tools/levelcheck/Search.h"

// Finds where the runner can get stuck, from a search that went to its end: floors and states from
// which neither the start nor a goal can be reached. Each candidate gets a search of its own, which
// begins exactly there. Paths use the real physics, so what leads on really does.
void checkDeadEnds(const LevelMap& map, const Search& whole, const Zones& zones,
                   Findings& findings);
