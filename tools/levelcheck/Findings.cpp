// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Findings.h"

#include <cstdio>
#include <ostream>

static constexpr std::size_t namedPlaces = 8;

std::string decimals(double number, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, number);
    return text;
}

void Places::add(int column, int row) {
    const auto [square, isNew] = squares.insert({{row / side, column / side}, places.size()});
    if (isNew) places.push_back({column, row, 0});
    ++places[square->second].count;
}

bool Places::hasNear(int column, int row) const {
    return squares.count({row / side, column / side}) > 0;
}

void Findings::measure(const std::string& name, double value, const std::string& text) {
    const Zones::Range* wanted = zones.wanted(name);
    if (!wanted) return add(note, text);
    require(value >= wanted->least && value <= wanted->most,
            text + " (expected " + decimals(wanted->least, 1) + " to " + decimals(wanted->most, 1) +
                ")");
}

void Findings::addPlaces(Kind kind, const Places& places, const std::string& what) {
    std::size_t named = 0, rest = 0;
    for (const auto& [column, row, count] : places.all()) {
        if (named++ < namedPlaces) {
            add(kind, what + zones.describe(column, row) + ": " + std::to_string(count));
        } else {
            rest += count;
        }
    }
    if (rest > 0) add(kind, what + "other places: " + std::to_string(rest));
}

void Findings::print(std::ostream& target) const {
    for (const Kind kind : {good, error, note}) {
        constexpr const char* names[] = {"good:  ", "error: ", "note:  "};
        for (const std::string& text : texts[kind]) target << names[kind] << text << "\n";
    }
    const std::size_t errors = texts[error].size(), notes = texts[note].size();
    target << errors << (errors == 1 ? " error, " : " errors, ") << notes
           << (notes == 1 ? " note\n" : " notes\n");
}
