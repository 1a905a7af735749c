// SPDX-License-Identifier: Zlib
#pragma once

#include <map>
#include <string>
#include <vector>

// A cell as every message names it: rows from the top, columns from the left, from 0.
std::string placeText(int column, int row);

// A named part of a level: the cells in any of its boxes. A goal zone is where the goal is meant to
// be reached.
struct Zone {
    struct Box {
        int left = 0; // columns and rows, all of them in the box
        int right = 0;
        int top = 0;
        int bottom = 0;
    };

    std::string name;
    bool goal = false;
    std::vector<Box> boxes;

    bool contains(int column, int row) const;
};

// The zones of a level and what its author wants of it, from a text of lines
//   region NAME LEFT-RIGHT TOP-BOTTOM
//   goal NAME LEFT-RIGHT TOP-BOTTOM
//   want MEASURE LEAST-MOST
// Lines of one kind and name make one zone; '#' begins a comment. A name is a region or a goal.
class Zones {
public:
    struct Range {
        double least = 0;
        double most = 0;
    };

    // Adds what a text says. Returns its mistakes, one line each.
    std::vector<std::string> read(const std::string& text);

    bool hasGoals() const { return anyGoal; }
    const std::vector<Zone>& all() const { return zones; }

    const Zone* find(const std::string& name) const; // null: none has this name

    // The first with this cell, or null.
    const Zone* regionAt(int column, int row) const { return at(column, row, false); }
    const Zone* goalAt(int column, int row) const { return at(column, row, true); }

    std::string describe(int column, int row) const; // the cell, and its region's name

    // The range wanted of a measure, or null: "seconds", "regions", "reached", "open", "winners".
    const Range* wanted(const std::string& measure) const;

private:
    std::string readLine(const std::string& line);
    const Zone* at(int column, int row, bool goal) const;

    std::vector<Zone> zones; // in the order of the text
    bool anyGoal = false;
    std::map<std::string, Range> wants;
};
