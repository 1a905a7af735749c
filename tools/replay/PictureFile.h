// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

// Writes what is painted in the back buffer of the current GL window, `width` by `height` pixels,
// as a PNG file of 8 bits a channel without alpha. False if the file cannot be written.
bool writePicture(const std::string& path, int width, int height);
