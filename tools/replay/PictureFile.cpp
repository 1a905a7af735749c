// SPDX-License-Identifier: Zlib
#include "tools/replay/PictureFile.h"

#include <GL/gl.h>
#include <png.h>

#include <vector>

bool writePicture(const std::string& path, int width, int height) {
    const int rowBytes = width * 3;
    std::vector<unsigned char> pixels(static_cast<std::size_t>(rowBytes) *
                                      static_cast<std::size_t>(height));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    glPixelStorei(GL_PACK_ALIGNMENT, 4);

    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGB;
    image.flags = PNG_IMAGE_FLAG_FAST;
    // A negative step: GL begins at the bottom row.
    return png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), -rowBytes, nullptr) != 0;
}
