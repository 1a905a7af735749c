// SPDX-License-Identifier: Zlib
#include "tools/replay/RunLevel.h"

#include <cstdio>
#include <stdexcept>

// FNV-1a with 64 bits.
static constexpr std::uint64_t hashStart = 0xCBF29CE484222325;
static constexpr std::uint64_t hashFactor = 0x100000001B3;

std::uint64_t RunLevel::hashOf(const LevelMap& map) {
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

RunLevel::RunLevel(const std::string& path)
    : name(path.substr(path.rfind('/') + 1)), map(FilePath(path)) {
    if (map.getWidth() == 0) throw std::runtime_error("cannot read the level " + path);
    hash = hashOf(map);
}

std::string RunLevel::hashText(std::uint64_t hash) {
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash));
    return digits;
}

// The text without bytes that would end its line.
static std::string oneLine(std::string text) {
    for (char& letter : text) {
        if (static_cast<unsigned char>(letter) < ' ') letter = ' ';
    }
    return text;
}

std::string RunLevel::headerText(const InputScript::Header& header) {
    std::string text = std::string(InputScript::headerLine) + "\n";
    const auto add = [&text](const char* key, const std::string& value) {
        if (!value.empty()) text += std::string("# ") + key + ": " + oneLine(value) + "\n";
    };
    add("game", header.game);
    add("level", header.level + " " + hashText(header.levelHash.value_or(0)));
    add("seed", std::to_string(header.seed));
    add("pitches", header.pitches);
    add("player", header.player);
    return text;
}

std::string RunLevel::refusal(const InputScript::Header& header) const {
    if (!header.levelHash || *header.levelHash == hash) return "";
    return "it was recorded on " + header.level + " " + hashText(*header.levelHash) +
           ", and this is " + name + " " + hashText(hash);
}
