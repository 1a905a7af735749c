// SPDX-License-Identifier: Zlib
#pragma once

#include "drawing/LoadedImage.h"
#include "tools/levelcheck/Findings.h"

// Checks of a level that nobody steers through, the scene behind the play: its pixels and start,
// and that the runner lands in good time, behind the vortex and before the text, and then rests.
void checkScene(const LoadedImage& picture, Findings& findings);
