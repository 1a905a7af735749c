// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

// Writes red, green and blue as a PNG file with 8 bits per channel. Each row starts `rowBytes`
// after the one before. If that is positive, the first row in memory is the top one; if it is
// negative, the bottom one. Returns false if the file cannot be written.
bool writePng(const std::string& path, int width, int height, const unsigned char* pixels,
              int rowBytes);
