// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

// A path as plain text, and the few questions about it through which the game finds its data.
// Nothing is normalised, and the file system is asked only by the operations that say so. The
// empty path is the null value: every question about it is answered false, 0 or empty. No
// operation throws. A plain value without shared state, usable from any thread.
class FilePath {
public:
    FilePath() = default;
    FilePath(std::string text) : path(std::move(text)) {}

    const std::string& text() const { return path; }

    // Whether anything lies at the path, and whether that is something else than a folder. Both
    // follow links and print nothing.
    bool exists() const;
    bool isFile() const;

    // Whether a file lies at the path that has an end: a pipe or a device could keep its reader
    // waiting for ever.
    bool isOrdinaryFile() const;

    // The ordinary file at the path, to be read byte by byte; a stream that is not open for
    // everything else, and for a file that cannot be read.
    std::ifstream open() const;

    // Whether a folder lies at the path. A failed query, a missing path included, prints a line.
    bool isDirectory() const;

    // The text behind the last dot of the whole path, the folders' dots included; the whole path
    // if it has no dot; empty for an existing folder. Asks isDirectory and so may print.
    std::string getExtension() const;

    // Number of entries of the folder, files and folders alike, without "." and "..".
    std::uint32_t getEntryCount() const;

    // The entry at a position counted from 0, in the file system's own order, which means nothing
    // across machines; empty if there is none.
    FilePath getEntry(std::uint32_t index) const;

    // This path, the separator, the other text: appended as they are.
    FilePath join(const std::string& other) const;

    // The folder of the running executable, links resolved, without a separator at its end.
    static FilePath getDataDirectory();

    // The folders in which the system keeps its fonts.
    static std::vector<FilePath> getSystemFontDirectories();

private:
    std::string path;
};
