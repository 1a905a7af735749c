// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A player's input as text. Each line is the number of a frame and any of these words:
//   left right up down   the direction keys held from that frame on, and no others
//   action escape        the key pressed and released in that frame
//   end                  the program is closed before that frame
// '#' starts a comment. Frame 0 is the first that the program draws. Frame numbers increase. The
// last line contains "end".
//
// A recorded run starts with a header of comments, which says how it was made; see Header. It may
// lack the end, because the recorder can be killed. It then ends after the frame of its last whole
// line.
class InputScript {
public:
    enum Key { up, left, right, down, action, escape, keyCount };
    static constexpr bool isDirection(int key) { return key < action; }
    static const char* nameOf(int key);

    // Most frames of a run; at the game's speed they take a day.
    static constexpr std::uint32_t mostFrames = 6'000'000;

    struct Press {
        Key key = up;
        bool pressed = true; // false: released
    };

    struct Header {
        bool given = false;                      // the first line is headerLine
        std::string game;                        // version of the recording game
        std::string level;                       // file name of the level's picture
        std::optional<std::uint64_t> levelHash;  // of its tiles
        std::uint32_t seed = 1;                  // of the random numbers
        std::string pitches;                     // file name of the tune, empty for any
        std::string player;                      // empty if not given
        std::optional<std::uint32_t> goalFrames; // frames of the play up to the goal, as claimed
    };
    static constexpr std::string_view headerLine = "# tarnwick run 1";

    // Reads a script. Returns false, with a text that names the line, if it is invalid.
    bool read(std::istream& source, std::string& failure);

    // Reads a script from a regular file. Throws std::runtime_error if it cannot be read or is
    // invalid.
    static InputScript fromFile(const std::string& path);

    // The presses before a frame, in order: released directions, pressed directions, other keys.
    std::vector<Press> pressesBefore(std::uint32_t frame) const;

    std::uint32_t getEnd() const { return end; } // frames
    bool isCutShort() const { return !ended; }   // recorded, and without its end
    const Header& getHeader() const { return header; }

private:
    // The keys of a line, a bit for each Key.
    struct Line {
        std::uint32_t frame = 0;
        std::uint8_t keys = 0;
    };

    bool readLine(std::string_view line, std::string& failure);
    bool readHeaderLine(std::string_view line, std::string& failure);

    Header header;
    std::vector<Line> lines; // in order of their frames
    std::uint32_t end = 0;
    bool ended = false;
};
