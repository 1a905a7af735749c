// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

// Ends the program from its start-up: thrown and caught by value; the entry function prints the
// text. Nothing else in the game throws.
struct FatalError {
    std::string text;
};
