// SPDX-License-Identifier: Zlib
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "tools/levelcheck/Places.h"
#include "tools/levelcheck/Zones.h"

// A number with so many digits behind the point.
std::string decimals(double number, int digits);

// What the checks have to say, in the order in which they say it; printed errors first.
class Findings {
public:
    void error(const std::string& text) { errors.push_back(text); }
    void note(const std::string& text) { notes.push_back(text); }

    void add(bool wrong, const std::string& text) { (wrong ? errors : notes).push_back(text); }

    // A line for each place, but not too many; `what` is the text before it.
    void addPlaces(const Zones& zones, const Places& places, bool wrong, const std::string& what);
    static constexpr std::size_t namedPlaces = 8;

    // A requirement; one that fails is an error.
    void require(bool holds, const std::string& text);

    void print(std::ostream& target) const;

    bool hasErrors() const { return !errors.empty(); }

private:
    std::vector<std::string> passed;
    std::vector<std::string> errors;
    std::vector<std::string> notes;
};
