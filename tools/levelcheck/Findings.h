// SPDX-License-Identifier: Zlib
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

// A cell, in the words of every line: rows from the top, columns from the left, from 0.
std::string placeText(int column, int row);

// What the checks have to say, in the order in which they say it; printed errors first.
class Findings {
public:
    void error(const std::string& text) { errors.push_back(text); }
    void note(const std::string& text) { notes.push_back(text); }

    void add(bool wrong, const std::string& text) { (wrong ? errors : notes).push_back(text); }

    // A requirement; one that fails is an error.
    void require(bool holds, const std::string& text);

    void print(std::ostream& target) const;

    bool hasErrors() const { return !errors.empty(); }

private:
    std::vector<std::string> passed;
    std::vector<std::string> errors;
    std::vector<std::string> notes;
};
