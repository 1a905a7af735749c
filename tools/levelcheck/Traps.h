// SPDX-License-Identifier: Zlib
#pragma once

#include <vector>

#include "tools/levelcheck/Places.h"
#include "tools/levelcheck/Search.h"

// The states of a search that went to its end from which neither the start nor a goal can be
// reached, gathered by the places where they end. A state stands for all with its key here, so a
// way out may be seen that is none (see Floors).
class Traps {
public:
    explicit Traps(const Search& search);

    const Places& getEnds() const { return ends; }

    // The state behind which there was no way back any more, for each place the first.
    const std::vector<RunnerState>& getEntrances() const { return entrances; }

private:
    Places ends;
    std::vector<RunnerState> entrances;
};
