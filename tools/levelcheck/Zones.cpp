// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Zones.h"

#include <algorithm>
#include <sstream>

static constexpr const char* measures[] = {"seconds", "regions", "reached", "open", "winners"};

std::string placeText(int column, int row) {
    return "row " + std::to_string(row) + ", column " + std::to_string(column);
}

bool Zone::contains(int column, int row) const {
    return std::any_of(boxes.begin(), boxes.end(), [&](const Box& box) {
        return column >= box.left && column <= box.right && row >= box.top && row <= box.bottom;
    });
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

// Reads "12-345", the first not above the second, none negative.
template <typename Number>
static bool readRange(std::istream& words, Number& first, Number& last) {
    char dash = 0;
    return words >> first >> dash >> last && dash == '-' && first >= 0 && first <= last;
}

std::string Zones::readLine(const std::string& line) {
    std::istringstream words(line);
    std::string kind, name, more;
    if (!(words >> kind)) return "";
    words >> name;
    if (kind == "want") {
        Range range;
        if (!readRange(words, range.least, range.most) || words >> more) {
            return "expected \"want MEASURE LEAST-MOST\"";
        }
        if (std::find(std::begin(measures), std::end(measures), name) == std::end(measures)) {
            return "unknown measure \"" + name + "\"";
        }
        wants[name] = range;
        return "";
    }
    const bool goal = kind == "goal";
    if (!goal && kind != "region") return "expected \"region\", \"goal\" or \"want\"";
    Zone::Box box;
    if (!readRange(words, box.left, box.right) || !readRange(words, box.top, box.bottom) ||
        words >> more) {
        return "expected \"" + kind + " NAME LEFT-RIGHT TOP-BOTTOM\"";
    }
    if (name.find(',') != std::string::npos) return "a name cannot contain a comma";
    auto zone = std::find_if(zones.begin(), zones.end(),
                             [&](const Zone& known) { return known.name == name; });
    if (zone == zones.end()) zone = zones.insert(zone, {name, goal, {}});
    if (zone->goal != goal) return "\"" + name + "\" is both a region and a goal";
    zone->boxes.push_back(box);
    anyGoal = anyGoal || goal;
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

std::string Zones::describe(int column, int row) const {
    const Zone* region = regionAt(column, row);
    return placeText(column, row) + (region ? " (" + region->name + ")" : "");
}

const Zones::Range* Zones::wanted(const std::string& measure) const {
    const auto range = wants.find(measure);
    return range == wants.end() ? nullptr : &range->second;
}
