// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tools/replay/InputScript.h"

// A run as a link: the address of a page with the game, and after "#run=" the text of the run,
// compressed (raw deflate) and written in the letters of base64url.
class RunLink {
public:
    static constexpr std::string_view mark = "#run=";
    static constexpr std::size_t mostLetters = 1 << 16; // after the mark
    static constexpr std::size_t mostText = 1 << 20;    // bytes of the run's text

    static bool isLink(std::string_view argument) {
        return argument.find(mark) != std::string_view::npos;
    }

    // The mark and what follows it. Throws std::runtime_error if the run is too long.
    static std::string of(const std::string& text);

    // The text of a run. Throws std::runtime_error if the link is broken or too long.
    static std::string textOf(std::string_view link);

    // The run of a link or else of a file. Throws std::runtime_error if it is invalid.
    static InputScript read(const std::string& argument);

    // What to call it: the file, or "link".
    static std::string nameOf(const std::string& argument) {
        return isLink(argument) ? "link" : argument;
    }
};
