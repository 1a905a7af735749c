// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <string>

#include "drawing/LoadedImage.h"

// Decodes PNG, JPEG (not progressive) and BMP files, known by their first bytes. Pictures of 3 or 4
// bytes a pixel are taken (an alpha of 255 joins the former); paletted and grey ones of 1 byte,
// those of more than 2^26 pixels, and everything that cannot be read, give the empty LoadedImage.
// Nothing is printed. It has no state and is made where it is needed; main thread only.
class ImageLoader {
public:
    LoadedImage loadFromMemory(const void* data, std::size_t bytes) const;
    LoadedImage loadFromFile(const std::string& path) const;
};
