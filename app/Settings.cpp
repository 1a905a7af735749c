// SPDX-License-Identifier: Zlib
#include "app/Settings.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>
#include <system_error>

#include "base/FilePath.h"
#include "platform/Platform.h"

static constexpr const char* folderName = "/Corvale";
static constexpr const char* homelessFolder = ".Corvale"; // below the working directory
static constexpr const char* fileName = "/Corvale.conf";
static constexpr std::size_t mostBytes = 1 << 20;  // the rest of the file is ignored
static constexpr std::streamsize lineBuffer = 128; // characters, with the terminating zero

// The per-user folder, created if it is missing.
static std::string userDirectory() {
    const std::string base = Platform::applicationDataFolder();
    if (base.empty()) {
        std::cout << "Error: Could not find Application Data directory." << std::endl;
        return homelessFolder;
    }
    const std::string path = base + folderName;
    switch (Platform::pathStatus(path).kind) {
    case Platform::PathKind::missing:
        if (Platform::makeFolder(path)) std::cout << "Created " << path << " path." << std::endl;
        break;
    case Platform::PathKind::unreachable:
        std::cout << "Could not create " << path << " path." << std::endl;
        break;
    default: break;
    }
    return path;
}

// Writes the file beside its place and then moves it there: the game never overwrites a settings
// file, so half a file would stay forever. Returns false if that fails.
static bool writeDefaultSettings(const std::string& path) {
    const std::string unfinished = path + ".new";
    std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
    const Platform::ScreenSize screen = Platform::primaryScreenSize();
    file << "w " << screen.width << "\r\n"
         << "h " << screen.height << "\r\n"
         << "a 0\r\n"
         << "f 1\r\n"
         << "ns 0\r\n"
         << "nm 0\r\n"
         << "aa DirectSound\r\n";
    file.close();
    std::error_code failure = std::make_error_code(std::errc::io_error);
    if (file) std::filesystem::rename(unfinished, path, failure);
    if (!failure) return true;
    std::cout << "Could not create " << path << std::endl;
    std::filesystem::remove(unfinished, failure);
    return false;
}

Settings::Settings() {
    const FilePath path(userDirectory() + fileName);
    // Writes a file only if nothing is there, not even a dangling link.
    std::error_code failure;
    const std::filesystem::file_status status =
        std::filesystem::symlink_status(path.text(), failure);
    if (status.type() == std::filesystem::file_type::not_found &&
        !writeDefaultSettings(path.text())) {
        return;
    }
    if (!path.open().is_open()) {
        std::cout << "Could not read " << path.text() << std::endl;
        return;
    }
    std::istringstream start(path.readStart(mostBytes));
    read(start);
}

void Settings::read(std::istream& file) {
    char buffer[lineBuffer];
    while (file.good()) {
        file.getline(buffer, lineBuffer);
        const bool overlong = file.fail() && !file.bad() && file.gcount() == lineBuffer - 1;
        readLine(buffer);
        if (overlong) { // drop the rest of the line
            file.clear();
            file.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
        }
    }
}

// Reads the value after the first `skipped` characters. A value that does not parse changes
// nothing.
template <typename Value>
static void readValue(const std::string& line, std::size_t skipped, Value& target) {
    std::istringstream text(line.substr(std::min(skipped, line.size())));
    Value value;
    if (text >> value) target = value;
}

void Settings::readLine(const std::string& line) {
    const char key = line.empty() ? '\0' : line[0];
    const char second = line.size() < 2 ? '\0' : line[1];
    if (key == 'w') readValue(line, 2, width);
    if (key == 'h') readValue(line, 2, height);
    if (key == 'a' && second == 'a') audioApi = line.substr(std::min<std::size_t>(3, line.size()));
    if (key == 'a' && second != 'a') readValue(line, 2, antialias);
    if (key == 'f') readValue(line, 2, fullscreen);
    if (key == 'n' && second == 's') readValue(line, 3, noSound);
    if (key == 'n' && second == 'm') readValue(line, 3, noMusic);
}
