// SPDX-License-Identifier: Zlib
#include "tools/replay/PictureFile.h"

#include <GL/gl.h>

#include <vector>

#include "tools/PngFile.h"

bool writePicture(const std::string& path, int width, int height) {
    const int rowBytes = width * 3;
    std::vector<unsigned char> pixels(static_cast<std::size_t>(rowBytes) *
                                      static_cast<std::size_t>(height));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    glPixelStorei(GL_PACK_ALIGNMENT, 4);

    // A negative step, because GL's first row is the bottom one.
    return writePng(path, width, height, pixels.data(), -rowBytes);
}
