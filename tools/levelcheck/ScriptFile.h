// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

#include "tools/levelcheck/Run.h"

// A run as an input script for the replay tool: six keys page through the title, the run follows,
// and the epilogue goes on until its last text. The first frame of the run is the script's 30th.
std::string scriptOf(const Inputs& inputs);

// The script's frame in which the epilogue begins, 200 frames behind the goal.
std::size_t epilogueFrame(const Inputs& inputs);
