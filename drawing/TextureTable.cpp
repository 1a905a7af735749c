// SPDX-License-Identifier: Zlib
#include "drawing/TextureTable.h"

#include <bit>
#include <cstring>
#include <limits>
#include <new>

static constexpr std::uint32_t largestSide = std::numeric_limits<std::uint16_t>::max(); // pixels
static constexpr std::size_t pixelBytes = 4;

PixelBuffer TextureTable::padRows(const PixelBuffer& pixels, std::uint32_t width,
                                  std::uint32_t height, std::uint32_t paddedWidth,
                                  std::uint32_t paddedHeight) {
    const std::size_t rowBytes = width * pixelBytes;
    const std::size_t paddedRowBytes = paddedWidth * pixelBytes;
    PixelBuffer padded(new (std::nothrow) std::uint8_t[paddedRowBytes * paddedHeight]());
    if (!padded) return padded;
    for (std::size_t y = 0; y < height; ++y) {
        const std::uint8_t* source = pixels.get() + y * rowBytes;
        std::uint8_t* target = padded.get() + y * paddedRowBytes;
        std::memcpy(target, source, rowBytes);
        std::memset(target + rowBytes, source[rowBytes - 1], paddedRowBytes - rowBytes);
    }
    return padded;
}

// Copies the picture's last row, with its padding, to all rows below.
static void repeatLastRow(const PixelBuffer& padded, std::uint32_t height,
                          std::uint32_t paddedWidth, std::uint32_t paddedHeight) {
    const std::size_t rowBytes = paddedWidth * pixelBytes;
    const std::uint8_t* last = padded.get() + (height - 1) * rowBytes;
    for (std::size_t y = height; y < paddedHeight; ++y) {
        std::memcpy(padded.get() + y * rowBytes, last, rowBytes);
    }
}

GLuint TextureTable::upload(const std::uint8_t* pixels, std::uint32_t width, std::uint32_t height,
                            GLint filter, GLint wrap) {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, static_cast<GLsizei>(width),
                 static_cast<GLsizei>(height), 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrap);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrap);
    glBindTexture(GL_TEXTURE_2D, 0);
    return name;
}

std::uint32_t TextureTable::create(PixelBuffer pixels, std::uint32_t width, std::uint32_t height) {
    const bool sized = width >= 1 && width <= largestSide && height >= 1 && height <= largestSide;
    if (!pixels || !sized) return 0;
    const std::uint32_t paddedWidth = std::bit_ceil(width);
    const std::uint32_t paddedHeight = std::bit_ceil(height);
    if (paddedWidth != width || paddedHeight != height) {
        pixels = padRows(pixels, width, height, paddedWidth, paddedHeight);
        if (!pixels) return 0;
        repeatLastRow(pixels, height, paddedWidth, paddedHeight);
    }
    TextureRecord record;
    record.name = upload(pixels.get(), paddedWidth, paddedHeight, filter, GL_CLAMP_TO_EDGE);
    record.width = static_cast<std::uint16_t>(width);
    record.height = static_cast<std::uint16_t>(height);
    record.uExtent = static_cast<float>(width) / static_cast<float>(paddedWidth);
    record.vExtent = static_cast<float>(height) / static_cast<float>(paddedHeight);
    return add(record);
}

std::uint32_t TextureTable::add(const TextureRecord& record) {
    while (textures.count(nextTexture) != 0) ++nextTexture;
    textures[nextTexture] = record;
    return nextTexture;
}

void TextureTable::erase(std::uint32_t handle) {
    const auto found = textures.find(handle);
    if (found == textures.end()) return;
    glDeleteTextures(1, &found->second.name);
    textures.erase(found);
}

const TextureRecord* TextureTable::find(std::uint32_t handle) const {
    const auto found = textures.find(handle);
    return found == textures.end() ? nullptr : &found->second;
}
