// SPDX-License-Identifier: Zlib
#pragma once

#include <string>
#include <vector>

// A named part of a level: cells in any of its boxes. A goal zone is where the goal is meant to be
// reached.
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

// The zones of a level, from a text of lines
//   region NAME LEFT-RIGHT TOP-BOTTOM
//   goal NAME LEFT-RIGHT TOP-BOTTOM
// Lines of one kind and name make one zone; '#' begins a comment. Neither kind uses a name of the
// other.
class Zones {
public:
    // Adds what a text says. Returns what is wrong with it, a line for each, nothing if it is
    // right.
    std::vector<std::string> read(const std::string& text);

    bool isEmpty() const { return zones.empty(); }
    const std::vector<Zone>& all() const { return zones; }

    const Zone* find(const std::string& name) const; // null: none has this name
    const Zone* regionAt(int column, int row) const; // the first that has the cell, or null
    const Zone* goalAt(int column, int row) const;   // the same
    std::string describe(int column, int row) const; // the cell, and its region's name

private:
    std::string readLine(const std::string& line);
    const Zone* at(int column, int row, bool goal) const;

    std::vector<Zone> zones; // in the order of the text
};
