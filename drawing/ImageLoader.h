// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <string>

#include "drawing/LoadedImage.h"

// Decodes PNG, JPEG (not progressive) and BMP files, recognised by their first bytes. Without an
// alpha channel the alpha is 255. Pictures of 1 byte per pixel (paletted or grey), pictures of more
// than 2^26 pixels and unreadable files give the empty LoadedImage. It prints nothing and has no
// state; make one where you need it. Main thread.
class ImageLoader {
public:
    LoadedImage loadFromMemory(const void* data, std::size_t bytes) const;
    LoadedImage loadFromFile(const std::string& path) const;
};
