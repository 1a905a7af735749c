// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Places.h"

std::string placeText(int column, int row) {
    return "row " + std::to_string(row) + ", column " + std::to_string(column);
}

void Places::add(int column, int row) {
    const auto [square, isNew] = squares.insert({{row / side, column / side}, places.size()});
    if (isNew) places.push_back({column, row, 0});
    ++places[square->second].count;
}
