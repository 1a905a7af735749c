// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <string>

#include "base/FilePath.h"

// The frequencies of the notes 0 to 7, in hertz.
using PitchTable = std::array<float, 8>;

// Reads a pitch file: one number a line, twice the frequency of a note in hertz. Only the first 255
// characters of a line are read, and only the first 64 KiB of the file. A line without a number,
// and every line of a file that cannot be read, gives 0, which is silence. Lines after the eighth
// are ignored.
PitchTable readPitches(const std::string& path);

// Reads the pitches from one entry of the folder, picked at random. If that entry is not a file
// with the extension "txt", all pitches are 0; no other entry is tried. Main thread.
PitchTable pickPitches(const FilePath& folder);
