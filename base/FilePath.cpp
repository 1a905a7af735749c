// SPDX-License-Identifier: Zlib
#include "base/FilePath.h"

#include <algorithm>
#include <array>
#include <iostream>

#include "platform/Platform.h"

static constexpr char separator = '/';

bool FilePath::exists() const {
    if (path.empty()) return false;
    const Platform::PathKind kind = Platform::pathStatus(path).kind;
    return kind != Platform::PathKind::missing && kind != Platform::PathKind::unreachable;
}

bool FilePath::isFile() const {
    if (path.empty()) return false;
    const Platform::PathKind kind = Platform::pathStatus(path).kind;
    return kind == Platform::PathKind::file || kind == Platform::PathKind::special;
}

bool FilePath::isOrdinaryFile() const {
    return !path.empty() && Platform::pathStatus(path).kind == Platform::PathKind::file;
}

std::ifstream FilePath::open() const {
    return isOrdinaryFile() ? std::ifstream(path, std::ios::binary) : std::ifstream();
}

std::string FilePath::readStart(std::size_t mostBytes) const {
    std::ifstream file = open();
    std::string text;
    std::array<char, 4096> part; // most files are far shorter than the limit
    while (text.size() < mostBytes && file) {
        const std::size_t wanted = std::min(part.size(), mostBytes - text.size());
        file.read(part.data(), static_cast<std::streamsize>(wanted));
        text.append(part.data(), static_cast<std::size_t>(file.gcount()));
    }
    return text;
}

bool FilePath::isDirectory() const {
    if (path.empty()) return false;
    const Platform::PathStatus status = Platform::pathStatus(path);
    if (!status.failure.empty()) {
        std::cout << "FilePath::isDirectory() error: " << status.failure << std::endl;
    }
    return status.kind == Platform::PathKind::directory;
}

std::string FilePath::getExtension() const {
    if (isDirectory()) return "";
    // Without a dot, rfind gives npos, and npos + 1 is 0: the whole path.
    return path.substr(path.rfind('.') + 1);
}

std::uint32_t FilePath::getEntryCount() const {
    if (!isDirectory()) return 0;
    const auto names = Platform::listDirectory(path);
    return names ? static_cast<std::uint32_t>(names->size()) : 0;
}

FilePath FilePath::getEntry(std::uint32_t index) const {
    const auto names = Platform::listDirectory(path);
    return names && index < names->size() ? join((*names)[index]) : FilePath();
}

FilePath FilePath::join(const std::string& other) const {
    return FilePath(path + separator + other);
}

FilePath FilePath::getDataDirectory() {
    const std::string executable = Platform::executablePath();
    // Without a separator, substr to npos keeps the whole text.
    return FilePath(executable.substr(0, executable.rfind(separator)));
}

std::vector<FilePath> FilePath::getSystemFontDirectories() {
    const std::string drive = Platform::environment("SystemDrive");
    if (drive.empty()) return {};
    return {FilePath(drive).join("Windows").join("Fonts")};
}
