// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/ReachChecks.h"

#include <algorithm>
#include <utility>
#include <vector>

static constexpr int border = 12;            // tiles that keep the outside out of view
static constexpr int safeBorder = 3;         // tiles that no flight passes
static constexpr double leastReached = 0.97; // of the open cells

// Calls visit(column, row) for each cell, in reading order.
template <typename Visit>
static void forEachCell(const LevelMap& map, Visit visit) {
    for (int row = 0; row < static_cast<int>(map.getHeight()); ++row) {
        for (int column = 0; column < static_cast<int>(map.getWidth()); ++column) {
            visit(column, row);
        }
    }
}

static int distanceToEdge(const LevelMap& map, int column, int row) {
    return std::min({column, row, static_cast<int>(map.getWidth()) - 1 - column,
                     static_cast<int>(map.getHeight()) - 1 - row});
}

void ReachChecks::checkBorder() const {
    Places open, near, flames;
    forEachCell(map, [&](int column, int row) {
        const int distance = distanceToEdge(map, column, row);
        if (distance >= border) return;
        const bool passed = search.isPassed(column, row);
        if (passed) (distance < safeBorder ? near : open).add(column, row);
        if (map.at(column, row) == LevelMap::flame) flames.add(column, row);
    });
    if (search.isOutsidePassed()) findings.error("the runner can leave the picture");
    findings.addPlaces(zones, near, true,
                       "cells less than " + std::to_string(safeBorder) +
                           " tiles from the edge are reached near ");
    findings.addPlaces(zones, open, false,
                       "cells less than " + std::to_string(border) +
                           " tiles from the edge are reached, and what lies outside may be "
                           "seen, near ");
    findings.addPlaces(zones, flames, true,
                       "flames in the border, which can throw the runner through it, near ");
}

// Open cells that were not passed: a place each for those that hang together, the largest first.
static Places findMissed(const LevelMap& map, const Search& search) {
    std::vector<bool> seen(std::size_t{map.getWidth()} * map.getHeight());
    const auto take = [&](int column, int row) {
        if (map.at(column, row) != LevelMap::empty || search.isPassed(column, row)) return false;
        auto mark =
            seen[static_cast<std::size_t>(row) * map.getWidth() + static_cast<std::size_t>(column)];
        const bool isNew = !mark;
        mark = true;
        return isNew;
    };
    std::vector<Places::Place> areas;
    std::vector<std::pair<int, int>> edge;
    forEachCell(map, [&](int column, int row) {
        if (!take(column, row)) return;
        areas.push_back({column, row, 0});
        edge.emplace_back(column, row);
        while (!edge.empty()) {
            const auto [x, y] = edge.back();
            edge.pop_back();
            ++areas.back().count;
            for (const auto& [nextX, nextY] : {std::pair(x + 1, y), std::pair(x - 1, y),
                                               std::pair(x, y + 1), std::pair(x, y - 1)}) {
                if (take(nextX, nextY)) edge.emplace_back(nextX, nextY);
            }
        }
    });
    std::stable_sort(areas.begin(), areas.end(),
                     [](const auto& one, const auto& other) { return one.count > other.count; });
    return Places(areas);
}

void ReachChecks::checkReach() const {
    std::size_t open = 0, passed = 0;
    forEachCell(map, [&](int column, int row) {
        if (map.at(column, row) != LevelMap::empty) return;
        ++open;
        passed += search.isPassed(column, row) ? 1 : 0;
    });
    const double share = open == 0 ? 1 : static_cast<double>(passed) / static_cast<double>(open);
    findings.require(share >= leastReached, decimals(100 * share, 2) + " % of " +
                                                std::to_string(open) +
                                                " open cells can be reached (" +
                                                decimals(100 * leastReached, 0) + " % wanted)");
    findings.addPlaces(zones, findMissed(map, search), false, "open cells out of reach from ");
}
