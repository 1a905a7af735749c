// SPDX-License-Identifier: Zlib
// Making what is painted later: textures, glyph images, meshes, fonts.
#include "drawing/OpenGLDrawer.h"

#include <limits>

#include "drawing/PowerOfTwo.h"

static constexpr std::uint32_t largestSide = std::numeric_limits<std::uint16_t>::max(); // pixels

GLuint OpenGLDrawer::uploadTexture(const PixelBuffer& pixels, std::uint32_t width,
                                   std::uint32_t height) const {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, static_cast<GLsizei>(width),
                 static_cast<GLsizei>(height), 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels.get());
    const GLint filter = linearFiltering ? GL_LINEAR : GL_NEAREST;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    return name; // still bound
}

std::uint32_t OpenGLDrawer::registerTexture(const TextureRecord& record) {
    while (textures.count(nextTexture) != 0) ++nextTexture;
    textures[nextTexture] = record;
    return nextTexture;
}

std::uint32_t OpenGLDrawer::createTexture(PixelBuffer pixels, std::uint32_t imageWidth,
                                          std::uint32_t imageHeight) {
    const bool sized = imageWidth >= 1 && imageWidth <= largestSide && imageHeight >= 1 &&
                       imageHeight <= largestSide;
    if (!hasContext || !pixels || !sized) return 0;
    const std::uint32_t textureWidth = nextPowerOfTwo(imageWidth);
    const std::uint32_t textureHeight = nextPowerOfTwo(imageHeight);
    if (textureWidth != imageWidth || textureHeight != imageHeight) {
        pixels = padRows(pixels, imageWidth, imageHeight, textureWidth, textureHeight);
        if (!pixels) return 0;
        repeatLastRow(pixels, imageHeight, textureWidth, textureHeight);
    }
    TextureRecord record;
    record.width = static_cast<std::uint16_t>(imageWidth);
    record.height = static_cast<std::uint16_t>(imageHeight);
    record.uExtent = static_cast<float>(imageWidth) / static_cast<float>(textureWidth);
    record.vExtent = static_cast<float>(imageHeight) / static_cast<float>(textureHeight);
    record.name = uploadTexture(pixels, textureWidth, textureHeight);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
    return registerTexture(record);
}

void OpenGLDrawer::deleteTexture(std::uint32_t handle) {
    const auto found = textures.find(handle);
    if (found == textures.end()) return;
    glDeleteTextures(1, &found->second.name);
    textures.erase(found);
}

const TextureRecord* OpenGLDrawer::textureRecord(std::uint32_t handle) const {
    const auto found = textures.find(handle);
    return found == textures.end() ? nullptr : &found->second;
}

void OpenGLDrawer::setGlyphImage(int index, PixelBuffer pixels, std::uint32_t size) {
    const bool known = index >= 0 && static_cast<std::size_t>(index) < glyphs.size();
    if (!hasContext || !known || !pixels || size < 1 || size > largestSide) return;
    if (!isPowerOfTwo(size)) {
        const std::uint32_t paddedSize = nextPowerOfTwo(size);
        if (paddedSize > largestSide) return; // the record holds 16 bits
        pixels = padRows(pixels, size, size, paddedSize, paddedSize);
        if (!pixels) return;
        glyphPadding = static_cast<std::int32_t>(paddedSize - size);
        size = paddedSize;
    }
    TextureRecord& glyph = glyphs[static_cast<std::size_t>(index)];
    const GLuint name = uploadTexture(pixels, size, size);
    glBindTexture(GL_TEXTURE_2D, 0);
    glDeleteTextures(1, &glyph.name);
    glyph = {name, static_cast<std::uint16_t>(size), static_cast<std::uint16_t>(size), 1, 1};
}

// Where values lie between the least and the greatest of them, 0 to 1; 0 if all are equal.
static std::vector<float> fractionsOf(const std::vector<float>& values, float minimum,
                                      float maximum) {
    std::vector<float> fractions;
    fractions.reserve(values.size());
    const float span = maximum - minimum;
    for (const float value : values) fractions.push_back(span == 0 ? 0 : (value - minimum) / span);
    return fractions;
}

static std::vector<float> boxFractions(const std::vector<float>& values) {
    float minimum = 10000;
    float maximum = -10000;
    // A value that lowers the minimum is not asked about the maximum; so points that fall all
    // along never set it. Element 0 is the centre and does not count.
    for (std::size_t i = 1; i < values.size(); ++i) {
        if (values[i] < minimum) {
            minimum = values[i];
        } else if (values[i] > maximum) {
            maximum = values[i];
        }
    }
    return fractionsOf(values, minimum, maximum);
}

std::int32_t OpenGLDrawer::createPolygon(const float* points, std::int32_t count) {
    Polygon polygon;
    polygon.xs.push_back(0);
    polygon.ys.push_back(0);
    for (std::int32_t i = 0; i < count; ++i) {
        polygon.xs.push_back(points[2 * i]);
        polygon.ys.push_back(points[2 * i + 1]);
        polygon.xs[0] += points[2 * i];
        polygon.ys[0] += points[2 * i + 1];
    }
    if (count > 0) {
        polygon.xs[0] /= static_cast<float>(count);
        polygon.ys[0] /= static_cast<float>(count);
    }
    polygon.us = boxFractions(polygon.xs);
    polygon.vs = boxFractions(polygon.ys);
    polygon.count = static_cast<std::int32_t>(polygon.xs.size());
    polygons.push_back(std::move(polygon));
    return static_cast<std::int32_t>(polygons.size()) - 1;
}

std::int32_t OpenGLDrawer::createFont(const std::string& fileName, float size) {
    if (!hasContext) return 0;
    auto font = std::make_unique<OpenGLFont>(fileName, size);
    if (!font->isValid()) return 0;
    fonts.push_back(std::move(font));
    return static_cast<std::int32_t>(fonts.size());
}
