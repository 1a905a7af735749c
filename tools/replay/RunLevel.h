// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <string>

#include "game/LevelMap.h"
#include "tools/replay/InputScript.h"

// The level that runs are played on, and the name and hash that a run's header keeps of it.
class RunLevel {
public:
    // Throws std::runtime_error if the file is not a level.
    explicit RunLevel(const std::string& path);

    const std::string& getName() const { return name; } // of the file, without folders
    std::uint64_t getHash() const { return hash; }      // of the size and the codes
    const LevelMap& getMap() const { return map; }

    // Why the run cannot be played on this level, empty if it can. A script without header can.
    std::string refusal(const InputScript::Header& header) const;

    // The hash of a level, and it as 16 hexadecimal digits.
    static std::uint64_t hashOf(const LevelMap& map);
    static std::string hashText(std::uint64_t hash);

    // The lines of a header, without the claim.
    static std::string headerText(const InputScript::Header& header);

private:
    std::string name;
    LevelMap map;
    std::uint64_t hash = 0;
};
