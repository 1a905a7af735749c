// SPDX-License-Identifier: Zlib
#include "app/Settings.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>

#include "platform/Platform.h"

static constexpr const char* folderName = "/Corvale";
static constexpr const char* homelessFolder = ".Corvale"; // below the working directory
static constexpr const char* fileName = "/Corvale.conf";
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

static void writeDefaultSettings(const std::string& path) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file) {
        std::cout << "Could not create " << path << std::endl;
        return;
    }
    const Platform::ScreenSize screen = Platform::primaryScreenSize();
    file << "w " << screen.width << "\r\n"
         << "h " << screen.height << "\r\n"
         << "a 0\r\n"
         << "f 1\r\n"
         << "ns 0\r\n"
         << "nm 0\r\n"
         << "aa DirectSound\r\n";
}

Settings::Settings() {
    const std::string path = userDirectory() + fileName;
    // Opening a pipe would wait for a writer.
    if (Platform::pathStatus(path).kind == Platform::PathKind::special) return;
    if (!std::ifstream(path, std::ios::binary)) writeDefaultSettings(path);
    std::ifstream file(path, std::ios::binary);
    if (file) read(file);
}

// Stops at the end of the file or at a read error: a folder with the file's name can be opened but
// not read.
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
