// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

#include "drawing/LoadedImage.h"
#include "game/LevelMap.h"
#include "game/WorldPoint.h"
#include "tools/levelcheck/Findings.h"

// Reads the picture of a level as the game does. If the game cannot use it, or it is too large to
// be checked, the pixels are null and an error is added. Throws std::runtime_error if it is not a
// PNG picture at all.
LoadedImage loadLevel(const std::string& path, Findings& findings);

// Checks that need no play: unknown pixels, and whether the runner can begin at the start. False if
// it cannot.
bool checkPicture(const LoadedImage& picture, const LevelMap& map, WorldPoint start,
                  const Zones& zones, Findings& findings);
