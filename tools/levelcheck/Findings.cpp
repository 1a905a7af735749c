// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/Findings.h"

#include <ostream>

std::string placeText(int column, int row) {
    return "row " + std::to_string(row) + ", column " + std::to_string(column);
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
