// SPDX-License-Identifier: Zlib
#include "tools/replay/RunLevel.h"

#include <cstdio>
#include <stdexcept>

// FNV-1a with 64 bits.
static constexpr std::uint64_t hashStart = 0xCBF29CE484222325;
static constexpr std::uint64_t hashFactor = 0x100000001B3;

static std::uint64_t hashOf(const LevelMap& map) {
    std::uint64_t hash = hashStart;
    const auto add = [&hash](std::uint32_t byte) { hash = (hash ^ byte) * hashFactor; };
    for (const std::uint32_t size : {map.getWidth(), map.getHeight()}) {
        for (int shift = 0; shift < 32; shift += 8) add(size >> shift & 0xFF);
    }
    for (int y = 0; y < static_cast<int>(map.getHeight()); ++y) {
        for (int x = 0; x < static_cast<int>(map.getWidth()); ++x) add(map.at(x, y));
    }
    return hash;
}

RunLevel::RunLevel(const std::string& file)
    : path(file), name(file.substr(file.rfind('/') + 1)), map(FilePath(file)) {
    if (map.getWidth() == 0) throw std::runtime_error("cannot read the level " + path);
    hash = hashOf(map);
}

std::string RunLevel::hashText(std::uint64_t hash) {
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash));
    return digits;
}

std::string RunLevel::refusal(const InputScript::Header& header) const {
    if (!header.levelHash || *header.levelHash == hash) return "";
    return "it was recorded on " + header.level + " " + hashText(*header.levelHash) +
           ", and this is " + name + " " + hashText(hash);
}
