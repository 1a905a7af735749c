// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tools/levelcheck/Zones.h"

// A number with this many decimal digits.
std::string decimals(double number, int digits);

// Cells, grouped into few places that a person can look at: the cells of one square of 16 by 16
// tiles make a place, named by the first of them.
class Places {
public:
    struct Place {
        int column = 0;
        int row = 0;
        std::size_t count = 0;
    };

    void add(int column, int row);
    bool hasNear(int column, int row) const; // a place in the same square

    // In the order of their first cells.
    const std::vector<Place>& all() const { return places; }

private:
    static constexpr int side = 16; // tiles

    std::vector<Place> places;
    std::map<std::pair<int, int>, std::size_t> squares; // to the place of each
};

// The results of the checks in the order in which they come. Errors make the exit status 1.
class Findings {
public:
    enum Kind { good, error, note };

    explicit Findings(const Zones& itsZones) : zones(itsZones) {}

    void add(Kind kind, const std::string& text) { texts[kind].push_back(text); }
    void addError(const std::string& text) { add(error, text); }

    // A property that has to hold; otherwise its text is an error.
    void require(bool holds, const std::string& text) { add(holds ? good : error, text); }

    // A measurement: a note, or required if the zones file asks for a range of it.
    void measure(const std::string& name, double value, const std::string& text);

    // A line for each of the first places and one for the rest; `what` is the text before a place.
    void addPlaces(Kind kind, const Places& places, const std::string& what);

    void print(std::ostream& target) const;

    bool hasErrors() const { return !texts[error].empty(); }

private:
    const Zones& zones;
    std::vector<std::string> texts[3]; // by kind
};
