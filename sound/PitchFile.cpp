// SPDX-License-Identifier: Zlib
#include "sound/PitchFile.h"

#include <sstream>

#include "base/Noise.h"

static constexpr std::size_t mostBytes = 1 << 16; // the rest of the file is ignored
static constexpr std::size_t longestLine = 255;   // characters; the rest of a line is ignored

PitchTable readPitches(const std::string& path) {
    PitchTable pitches = {};
    std::istringstream file(FilePath(path).readStart(mostBytes));
    std::string line;
    for (float& pitch : pitches) {
        if (!std::getline(file, line)) break;
        std::istringstream text(line.substr(0, longestLine));
        float twice = 0;
        if (text >> twice) pitch = twice * 0.5f;
    }
    return pitches;
}

PitchTable pickPitches(const FilePath& folder) {
    // For a missing folder getEntryCount would print a line.
    const auto count = folder.exists() ? static_cast<int>(folder.getEntryCount()) : 0;
    const FilePath file = folder.getEntry(static_cast<std::uint32_t>(noiseRange(count)));
    if (!file.exists() || file.getExtension() != "txt") return {};
    return readPitches(file.text());
}
