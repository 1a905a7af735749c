// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

// Writes a picture, red, green, blue, as a PNG file of 8 bits a channel. The pixels begin with the
// top row; from row to row it is so many bytes, a negative number for rows from the bottom, whose
// first in memory is the bottom one. False if the file cannot be written.
bool writePng(const std::string& path, int width, int height, const unsigned char* pixels,
              int rowBytes);
