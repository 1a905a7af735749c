// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <istream>
#include <string>

// The per-user settings. The constructor reads the file Corvale/Corvale.conf in the user's
// application data folder, and creates folder and file if they are missing. It never changes what
// is there. Each line is a key, a space and a value, at most 127 characters; a value that does not
// parse leaves the default. Only the first 1 MiB is read. Main thread, at start-up. It prints what
// it creates, and what it cannot create or read.
struct Settings {
    Settings();

    // The values for keys that the file lacks. A new file has other values.
    std::int32_t width = 1024;            // "w", pixels
    std::int32_t height = 768;            // "h", pixels
    std::int32_t antialias = 6;           // "a", samples
    bool fullscreen = true;               // "f"
    bool noSound = false;                 // "ns"
    bool noMusic = false;                 // "nm"
    std::string audioApi = "DirectSound"; // "aa"; includes the carriage return of its line

private:
    void read(std::istream& file);
    void readLine(const std::string& line);
};
