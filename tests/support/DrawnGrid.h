// SPDX-License-Identifier: Zlib
#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "game/LevelMap.h"

// A level drawn as text, one line per row: '.' is empty, 'F' a flame, '#' rock; any other character
// is a tile of that code, which is rock too. A line feed at the very start is ignored, and a short
// line is padded with rock.
inline LevelMap drawnGrid(const std::string& drawing) {
    std::vector<std::string> lines;
    std::size_t width = 0;
    std::istringstream source(drawing.starts_with('\n') ? drawing.substr(1) : drawing);
    for (std::string line; std::getline(source, line);) {
        width = std::max(width, line.size());
        lines.push_back(line);
    }
    LoadedImage picture;
    picture.width = static_cast<std::uint32_t>(width);
    picture.height = static_cast<std::uint32_t>(lines.size());
    picture.pixels = std::make_unique<std::uint8_t[]>(width * lines.size() * 4);
    std::uint8_t* pixel = picture.pixels.get();
    for (std::string& line : lines) {
        line.resize(width, '#');
        for (const char sign : line) {
            *pixel = sign == '.'   ? LevelMap::empty
                     : sign == 'F' ? LevelMap::flame
                     : sign == '#' ? std::uint8_t{0x20}
                                   : static_cast<std::uint8_t>(sign);
            pixel += 4; // the other bytes of a pixel are ignored
        }
    }
    return LevelMap(picture);
}
