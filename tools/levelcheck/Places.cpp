// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Places.h"

#include <algorithm>
#include <cstdlib>

static constexpr int reach = 12; // tiles to each side of a place's first cell

void Places::add(int column, int row, std::size_t count) {
    const auto near = [&](const Place& place) {
        return std::abs(place.column - column) <= reach && std::abs(place.row - row) <= reach;
    };
    const auto place = std::find_if(places.begin(), places.end(), near);
    if (place == places.end()) {
        places.push_back({column, row, count});
    } else {
        place->count += count;
    }
}
