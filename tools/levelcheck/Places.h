// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <vector>

// Cells, gathered into few places that a person can look at. Each is named by its first cell; the
// cells come in an order that is always the same.
class Places {
public:
    struct Place {
        int column = 0;
        int row = 0;
        std::size_t count = 0;
    };

    void add(int column, int row, std::size_t count = 1);

    const std::vector<Place>& all() const { return places; }

private:
    std::vector<Place> places;
};
