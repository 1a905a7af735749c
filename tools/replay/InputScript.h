// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <istream>
#include <map>
#include <string>
#include <vector>

// What a player does, as text. Each line is the number of a frame and any of the words
//   left right up down   the direction keys held from that frame on, and no others
//   action escape        the key pressed and released in that frame
//   end                  the program is closed before that frame
// '#' begins a comment. Frame 0 is the first that the program draws; frames ascend; the last line
// holds "end".
class InputScript {
public:
    enum Key { up, left, right, down, action, escape, keyCount };

    struct Press {
        Key key = up;
        bool pressed = true; // false: released
    };

    // Reads a script. False, with a text that names the line, if it is not one.
    bool read(std::istream& source, std::string& failure);

    // What happens before a frame, in order: releases, presses of directions, other keys.
    std::vector<Press> pressesBefore(std::uint32_t frame) const;

    std::uint32_t getEnd() const { return end; } // frames

private:
    bool readLine(const std::string& line, bool held[keyCount], std::string& failure);

    std::map<std::uint32_t, std::vector<Press>> presses; // by frame
    std::uint32_t end = 0;
    bool ended = false;
};
