// SPDX-License-Identifier: Zlib
#include "tools/PngFile.h"

#include <png.h>

bool writePng(const std::string& path, int width, int height, const unsigned char* pixels,
              int rowBytes) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGB;
    image.flags = PNG_IMAGE_FLAG_FAST;
    return png_image_write_to_file(&image, path.c_str(), 0, pixels, rowBytes, nullptr) != 0;
}
