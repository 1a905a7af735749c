// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Zones.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "tools/levelcheck/Places.h"

static constexpr int lastTile = 65535;

bool Zone::contains(int column, int row) const {
    return std::any_of(boxes.begin(), boxes.end(), [&](const Box& box) {
        return column >= box.left && column <= box.right && row >= box.top && row <= box.bottom;
    });
}

// All of "12-345", the first not above the second.
static bool readRange(const std::string& text, int& first, int& last) {
    const char* const end = text.data() + text.size();
    const auto [dash, problem] = std::from_chars(text.data(), end, first);
    if (problem != std::errc() || dash == end || *dash != '-') return false;
    const auto [stop, otherProblem] = std::from_chars(dash + 1, end, last);
    return otherProblem == std::errc() && stop == end && first >= 0 && first <= last &&
           last <= lastTile;
}

std::vector<std::string> Zones::read(const std::string& text) {
    std::vector<std::string> problems;
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        const std::string problem = readLine(line.substr(0, line.find('#')));
        if (!problem.empty()) {
            problems.push_back("line " + std::to_string(number) + ": " + problem);
        }
    }
    return problems;
}

std::string Zones::readLine(const std::string& line) {
    std::istringstream words(line);
    std::string kind, name, columns, rows, more;
    if (!(words >> kind)) return "";
    if (kind != "region" && kind != "goal") return "begins with neither \"region\" nor \"goal\"";
    if (!(words >> name >> columns >> rows) || words >> more) {
        return "is not \"" + kind + " NAME LEFT-RIGHT TOP-BOTTOM\"";
    }
    if (name.find(',') != std::string::npos) return "a name has no comma";
    Zone::Box box;
    if (!readRange(columns, box.left, box.right)) return "\"" + columns + "\" are no columns";
    if (!readRange(rows, box.top, box.bottom)) return "\"" + rows + "\" are no rows";

    const bool goal = kind == "goal";
    auto zone = std::find_if(zones.begin(), zones.end(),
                             [&](const Zone& known) { return known.name == name; });
    if (zone == zones.end()) zone = zones.insert(zone, {name, goal, {}});
    if (zone->goal != goal) return "\"" + name + "\" is a region and a goal";
    zone->boxes.push_back(box);
    return "";
}

const Zone* Zones::find(const std::string& name) const {
    const auto zone = std::find_if(zones.begin(), zones.end(),
                                   [&](const Zone& known) { return known.name == name; });
    return zone == zones.end() ? nullptr : &*zone;
}

const Zone* Zones::at(int column, int row, bool goal) const {
    const auto zone = std::find_if(zones.begin(), zones.end(), [&](const Zone& known) {
        return known.goal == goal && known.contains(column, row);
    });
    return zone == zones.end() ? nullptr : &*zone;
}

const Zone* Zones::regionAt(int column, int row) const {
    return at(column, row, false);
}

const Zone* Zones::goalAt(int column, int row) const {
    return at(column, row, true);
}

std::string Zones::describe(int column, int row) const {
    const Zone* region = regionAt(column, row);
    return placeText(column, row) + (region ? " (" + region->name + ")" : "");
}
