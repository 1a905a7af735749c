// SPDX-License-Identifier: Zlib
#include "tests/support/GlWindow.h"

#include <SDL.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

bool Pixel::isNear(const Pixel& other, int tolerance) const {
    return std::abs(r - other.r) <= tolerance && std::abs(g - other.g) <= tolerance &&
           std::abs(b - other.b) <= tolerance;
}

std::ostream& operator<<(std::ostream& out, const Pixel& pixel) {
    return out << "(" << pixel.r << ", " << pixel.g << ", " << pixel.b << ")";
}

std::ostream& operator<<(std::ostream& out, const Picture::Box& box) {
    return out << box.left << ".." << box.right << " by " << box.top << ".." << box.bottom;
}

Picture::Picture(int pictureWidth, int pictureHeight)
    : width(pictureWidth), height(pictureHeight),
      bytes(static_cast<std::size_t>(width * height) * 3) {}

Picture Picture::ofWindow(int width, int height) {
    Picture picture(width, height);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, picture.bytes.data());
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    return picture;
}

Pixel Picture::at(int x, int y) const {
    if (x < 0 || x >= width || y < 0 || y >= height) return {-1, -1, -1}; // equal to no pixel
    const int row = height - 1 - y;
    const std::uint8_t* pixel = &bytes[static_cast<std::size_t>(row * width + x) * 3];
    return {pixel[0], pixel[1], pixel[2]};
}

int Picture::count(const Pixel& pixel) const {
    int found = 0;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        if (bytes[i] == pixel.r && bytes[i + 1] == pixel.g && bytes[i + 2] == pixel.b) ++found;
    }
    return found;
}

Picture::Box Picture::ink() const {
    Box box = {width, height, 0, 0};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (at(x, y) == black) continue;
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                   std::max(box.bottom, y + 1)};
        }
    }
    return box;
}

std::string Picture::differenceTo(const Picture& other) const {
    if (*this == other) return "";
    std::ostringstream words;
    for (int i = 0; i < width * height && words.str().empty(); ++i) {
        const Pixel here = at(i % width, i / width);
        const Pixel there = other.at(i % width, i / width);
        if (here != there) {
            words << here << " and " << there << " at " << i % width << ", " << i / width;
        }
    }
    return words.str();
}

void GlWindow::SetUp() {
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    openDrawer = makeDrawer();
    const char* const variable = std::getenv("SAMPLES");
    const GLint samples = variable ? std::atoi(variable) : 0;
    ASSERT_TRUE(openDrawer->createWindow(width, height, false, samples));
    GLint opened = 0;
    glGetIntegerv(GL_SAMPLES, &opened);
    ASSERT_EQ(opened, samples);
    ASSERT_EQ(SDL_GetVideoSurface()->w, width);
    ASSERT_EQ(SDL_GetVideoSurface()->h, height);
}

void GlWindow::TearDown() {
    openDrawer.reset();
    SDL_Quit();
}

Picture GlWindow::paint(const std::function<void(OpenGLDrawer&)>& scene) {
    openDrawer->beginFrame();
    scene(*openDrawer);
    Picture picture = Picture::ofWindow(width, height);
    openDrawer->endFrame();
    return picture;
}

std::uint32_t GlWindow::makeTexture(int textureWidth, int textureHeight,
                                    const std::function<Pixel(int, int)>& colourOf, int alpha,
                                    bool smooth) {
    openDrawer->setTextureFiltering(smooth);
    const std::uint32_t handle = openDrawer->createTexture(
        makePixels(textureWidth, textureHeight, colourOf, alpha),
        static_cast<std::uint32_t>(textureWidth), static_cast<std::uint32_t>(textureHeight));
    openDrawer->setTextureFiltering(true);
    return handle;
}

std::uint32_t GlWindow::quarters() {
    static const std::uint32_t handle = makeTexture(
        8, 8,
        [](int x, int y) {
            if (y < 4) return x < 4 ? red : green;
            return x < 4 ? blue : white;
        },
        255, false);
    return handle;
}

std::array<GLint, 4> realViewport() {
    std::array<GLint, 4> viewport = {};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    return viewport;
}

PixelBuffer makePixels(int width, int height, const std::function<Pixel(int, int)>& colourOf,
                       int alpha) {
    auto pixels = std::make_unique<std::uint8_t[]>(static_cast<std::size_t>(width * height) * 4);
    std::uint8_t* next = pixels.get();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Pixel colour = colourOf(x, y);
            for (const int channel : {colour.r, colour.g, colour.b, alpha}) {
                *next++ = static_cast<std::uint8_t>(channel);
            }
        }
    }
    return pixels;
}
