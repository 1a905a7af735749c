// SPDX-License-Identifier: Zlib
#include "sound/PatchFile.h"

#include <cmath>
#include <iostream>
#include <sstream>

#include "base/FilePath.h"

static constexpr std::size_t mostBytes = 1 << 16; // the rest of the file is ignored
static constexpr int countLine = 23;
static constexpr std::size_t countColumn = 26;
static constexpr int linesToValues = 2;          // ignored, between the count and the first value
static constexpr std::int32_t mostValues = 1000; // far more than any voice has

PatchFile::PatchFile(const std::string& path, std::int32_t parameterCount) {
    std::istringstream file(FilePath(path).readStart(mostBytes));
    if (readCount(file) != parameterCount) {
        std::cout << "PolyphonicSynth: Number of parameters in file does not match synth's number "
                     "of parameters."
                  << std::endl;
        return;
    }
    readValues(file);
}

// Returns -1 if there is no number.
std::int32_t PatchFile::readCount(std::istream& file) {
    std::string line;
    for (int i = 0; i < countLine; ++i) {
        if (!std::getline(file, line)) return -1;
    }
    if (line.size() <= countColumn) return -1;
    std::istringstream text(line.substr(countColumn, line.size() - countColumn - 1));
    std::int32_t count = -1;
    return text >> count ? count : -1;
}

void PatchFile::readValues(std::istream& file) {
    std::string line;
    for (int i = 0; i < linesToValues; ++i) std::getline(file, line);
    for (std::int32_t index = 0; index < mostValues && std::getline(file, line); ++index) {
        if (!line.empty() && line[0] == '}') return;
        if (line.size() < 2) continue;
        std::istringstream text(line.substr(0, line.size() - 2));
        float number = 0;
        if (text >> number && std::isfinite(number)) values.push_back({index, number});
    }
}
