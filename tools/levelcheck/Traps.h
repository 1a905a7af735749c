// SPDX-License-Identifier: Zlib
#pragma once

#include <vector>

#include "tools/levelcheck/Places.h"
#include "tools/levelcheck/Search.h"

// The states of a search that went to its end from which neither the start nor a goal can be
// reached, gathered into places. A state stands for all with its key here, so a way out may be seen
// that is none (see Floors).
class Traps {
public:
    explicit Traps(const Search& search);

    // States, all of them.
    std::size_t count() const { return trapped; }

    // Where the runner comes to rest in them; where all trapped states are, if it never does.
    const Places& getEnds() const { return ends; }

    // The state behind which there was no way back any more, for each place the first.
    const std::vector<RunnerState>& getEntrances() const { return entrances; }

private:
    std::size_t trapped = 0;
    Places ends;
    std::vector<RunnerState> entrances;
};
