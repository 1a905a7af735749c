// SPDX-License-Identifier: Zlib
#pragma once

#include <string>
#include <vector>

#include "game/LevelMap.h"
#include "game/WorldPoint.h"

// Writes a PNG picture of a whole level with the game's tiles, made smaller, in front of one even
// colour. Over it lies the path of a run, with a green mark at its start and a yellow one at its
// end; it may be empty. Returns false if the file cannot be written.
bool writeLevelPicture(const std::string& file, const LevelMap& map,
                       const std::vector<WorldPoint>& path);
