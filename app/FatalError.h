// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

// Thrown by start-up to end the program; main prints the text. Nothing else in the game throws.
struct FatalError {
    std::string text;
};
