// SPDX-License-Identifier: Zlib
#pragma once

#include <ostream>
#include <string>

#include "drawing/LoadedImage.h"
#include "tools/levelcheck/Findings.h"
#include "tools/levelcheck/Run.h"

// All checks of a level that is played, one after the other, for a level whose start is empty.
// Prints what it measures to `target` at once; what is wrong goes to the findings. Returns the
// fastest run to the goal zone of that name, "" for any; it is empty if none was found.
Inputs checkLevel(const LevelMap& map, const Zones& zones, const std::string& goal,
                  Findings& findings, std::ostream& target);

// Checks that need no play: unknown pixels, and whether the runner can begin at the start. False if
// it cannot.
bool checkPicture(const LoadedImage& picture, const LevelMap& map, WorldPoint start,
                  Findings& findings);

// Checks the scene after the play, in which nobody steers and whose start is empty: the runner
// lands in time, after the vortex and before the text, and then stays at rest.
void checkScene(const LevelMap& map, Findings& findings);
