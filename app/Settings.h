// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <istream>
#include <string>

// The per-user settings. Building the record reads the file "Corvale.conf" in the folder "Corvale"
// of the user's application data, and makes both if they are missing; a file that can be read is
// never changed. A file is lines of a key, a blank and a value, 127 characters at most each; what
// does not parse leaves its default. Main thread, at start-up; it prints what it makes or cannot
// make.
struct Settings {
    Settings();

    // What a file without the key leaves in place; a new file says other things.
    std::int32_t width = 1024;            // "w", pixels
    std::int32_t height = 768;            // "h", pixels
    std::int32_t antialias = 6;           // "a", samples
    bool fullscreen = true;               // "f"
    bool noSound = false;                 // "ns"
    bool noMusic = false;                 // "nm"
    std::string audioApi = "DirectSound"; // "aa"; keeps the carriage return of its line

private:
    void read(std::istream& file);
    void readLine(const std::string& line);
};
