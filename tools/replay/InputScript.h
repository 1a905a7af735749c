// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <istream>
#include <map>
#include <string>
#include <vector>

// A player's input as text. Each line is the number of a frame and any of these words:
//   left right up down   the direction keys held from that frame on, and no others
//   action escape        the key pressed and released in that frame
//   end                  the program is closed before that frame
// '#' starts a comment. Frame 0 is the first that the program draws. Frame numbers increase. The
// last line contains "end".
class InputScript {
public:
    enum Key { up, left, right, down, action, escape, keyCount };

    struct Press {
        Key key = up;
        bool pressed = true; // false: released
    };

    // Reads a script. Returns false, with a text that names the line, if it is invalid.
    bool read(std::istream& source, std::string& failure);

    // The presses before a frame, in order: released directions, pressed directions, other keys.
    std::vector<Press> pressesBefore(std::uint32_t frame) const;

    std::uint32_t getEnd() const { return end; } // frames

private:
    bool readLine(const std::string& line, bool held[keyCount], std::string& failure);

    std::map<std::uint32_t, std::vector<Press>> presses; // by frame
    std::uint32_t end = 0;
    bool ended = false;
};
