// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Findings.h"

#include <cstdio>
#include <ostream>

std::string decimals(double number, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, number);
    return text;
}

void Findings::addPlaces(const Zones& zones, const Places& places, bool wrong,
                         const std::string& what) {
    std::size_t rest = 0;
    for (std::size_t i = 0; i < places.all().size(); ++i) {
        const Places::Place& place = places.all()[i];
        if (i >= namedPlaces) {
            rest += place.count;
            continue;
        }
        add(wrong,
            what + zones.describe(place.column, place.row) + ": " + std::to_string(place.count));
    }
    if (rest > 0) add(wrong, what + "other places: " + std::to_string(rest));
}

void Findings::require(bool holds, const std::string& text) {
    (holds ? passed : errors).push_back(text);
}

static void printAll(std::ostream& target, const char* kind, const std::vector<std::string>& all) {
    for (const std::string& text : all) target << kind << text << "\n";
}

void Findings::print(std::ostream& target) const {
    printAll(target, "good:  ", passed);
    printAll(target, "error: ", errors);
    printAll(target, "note:  ", notes);
    target << errors.size() << (errors.size() == 1 ? " error, " : " errors, ") << notes.size()
           << (notes.size() == 1 ? " note\n" : " notes\n");
}
