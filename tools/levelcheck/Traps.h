// SPDX-License-Identifier: Zlib
#pragma once

#include "tools/levelcheck/Places.h"
#include "tools/levelcheck/Search.h"

// The states of a whole search from which neither the start nor a goal can be reached, gathered
// into places.
Places findTraps(const Search& search);
