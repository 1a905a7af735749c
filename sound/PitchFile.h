// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <string>

#include "base/FilePath.h"

// The frequencies of the notes 0 to 7, in hertz.
using PitchTable = std::array<float, 8>;

// Reads a file of pitches: a number a line, twice the frequency in hertz of a note. Of a line 255
// characters count. A line without a number gives 0, silence; lines beyond the eighth are ignored,
// and a file that cannot be read leaves silence.
PitchTable readPitches(const std::string& path);

// Reads the pitches from one entry of the folder, picked at random. If that is no file with the
// extension "txt" they are silence, and no other is tried. Main thread.
PitchTable pickPitches(const FilePath& folder);
