// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

// A cell, in the words of every line: rows from the top, columns from the left, from 0.
std::string placeText(int column, int row);

// Cells, gathered into few places that a person can look at: those of one square of 16 by 16 make
// a place, which is named by the first of them.
class Places {
public:
    struct Place {
        int column = 0;
        int row = 0;
        std::size_t count = 0;
    };

    Places() = default;

    // Places that were gathered otherwise, in their order.
    explicit Places(std::vector<Place> gathered) : places(std::move(gathered)) {}

    void add(int column, int row);

    // In the order of their first cells.
    const std::vector<Place>& all() const { return places; }

private:
    static constexpr int side = 16; // tiles

    std::vector<Place> places;
    std::map<std::pair<int, int>, std::size_t> squares; // to the place of each
};
