// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

// Writes the back buffer of the current GL window, `width` by `height` pixels, as a PNG file with 8
// bits per channel and no alpha. Returns false if the file cannot be written.
bool writePicture(const std::string& path, int width, int height);
