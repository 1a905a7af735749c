// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

// A path as plain text, with the operations that the game needs to find its data. Nothing is
// normalised. The empty path is the null value: all operations return false, 0 or empty for it. No
// operation throws. A plain value without shared state, usable from any thread.
class FilePath {
public:
    FilePath() = default;
    FilePath(std::string text) : path(std::move(text)) {}

    const std::string& text() const { return path; }

    // Whether anything exists at the path, and whether it is something other than a folder. Both
    // follow links and print nothing.
    bool exists() const;
    bool isFile() const;

    // Whether a regular file exists at the path. Reading a pipe or a device could block forever.
    bool isOrdinaryFile() const;

    // Opens the regular file at the path for binary reading. For anything else, and for a file that
    // cannot be read, the stream is not open.
    std::ifstream open() const;

    // The regular file at the path, or its first mostBytes bytes if it is longer; empty where open
    // fails. For text files from anyone, which may have any size.
    std::string readStart(std::size_t mostBytes) const;

    // Whether a folder exists at the path. A failed query prints a line, also for a missing path.
    bool isDirectory() const;

    // The text after the last dot of the whole path, which may be a folder's dot; the whole path if
    // it has no dot; empty for an existing folder. Calls isDirectory, so it may print a line.
    std::string getExtension() const;

    // The number of entries of the folder, files and folders alike, without "." and "..".
    std::uint32_t getEntryCount() const;

    // The entry at a position from 0, in the order of the file system, which differs between
    // machines; empty if there is none.
    FilePath getEntry(std::uint32_t index) const;

    // This path, a separator and the other text, joined without any check.
    FilePath join(const std::string& other) const;

    // The folder of the running executable, with links resolved, without a separator at the end.
    static FilePath getDataDirectory();

    // The folders that contain the system's fonts.
    static std::vector<FilePath> getSystemFontDirectories();

private:
    std::string path;
};
