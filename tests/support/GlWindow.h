// SPDX-License-Identifier: Zlib
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <compare>
#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <vector>

#include "drawing/OpenGLDrawer.h"

// A pixel; each channel is 0 to 255.
struct Pixel {
    int r = 0;
    int g = 0;
    int b = 0;

    auto operator<=>(const Pixel&) const = default;
    // Whether each channel differs by at most the tolerance.
    bool isNear(const Pixel& other, int tolerance = 2) const;
};
std::ostream& operator<<(std::ostream& out, const Pixel& pixel);

inline constexpr Pixel black = {0, 0, 0};
inline constexpr Pixel white = {255, 255, 255};
inline constexpr Pixel red = {255, 0, 0};
inline constexpr Pixel green = {0, 255, 0};
inline constexpr Pixel blue = {0, 0, 255};

// What a window showed. x and y count pixels from the top left corner.
class Picture {
public:
    // right and bottom are just outside the box.
    struct Box {
        int left, top, right, bottom;
        bool operator==(const Box&) const = default;
    };

    // What has been drawn on a window of this size since the last swap.
    static Picture ofWindow(int width, int height);

    Pixel at(int x, int y) const;
    // RGB rows from the bottom, tightly packed.
    const std::vector<std::uint8_t>& rows() const { return bytes; }
    bool operator==(const Picture& other) const { return bytes == other.bytes; }

    int count(const Pixel& pixel) const;
    Box ink() const; // the smallest box around all pixels that are not black
    bool isBlack() const { return count(black) == width * height; }
    // Describes the first difference from a picture of the same size; empty if there is none.
    std::string differenceTo(const Picture& other) const;

private:
    Picture(int width, int height);

    int width;
    int height;
    std::vector<std::uint8_t> bytes;
};
std::ostream& operator<<(std::ostream& out, const Picture::Box& box);

// The one window of a test program, with the game's drawer on it. The game keeps texture handles
// for the whole process, so a program opens one window for all its tests.
class GlWindow : public testing::Environment {
public:
    // In pixels: a unit of the virtual screen is a pixel.
    static constexpr std::uint16_t width = 1280;
    static constexpr std::uint16_t height = 720;

    // Opens the window before the first test, with as many samples a pixel as the environment
    // variable SAMPLES says. DrawerType may record what it draws.
    template <typename DrawerType = OpenGLDrawer>
    static GlWindow* open() {
        const auto make = [] { return std::make_unique<DrawerType>(width, height); };
        auto* window = new GlWindow(make);
        testing::AddGlobalTestEnvironment(window); // owns it
        return window;
    }

    void SetUp() override;
    void TearDown() override;

    OpenGLDrawer& drawer() { return *openDrawer; }

    // Paints a frame on a cleared window and reads it back.
    Picture paint(const std::function<void(OpenGLDrawer&)>& scene);

    // Makes a texture from makePixels, smoothed or with hard pixels; returns its handle.
    std::uint32_t makeTexture(int textureWidth, int textureHeight,
                              const std::function<Pixel(int, int)>& colourOf, int alpha = 255,
                              bool smooth = true);
    // The handle of a picture of 8 by 8 hard pixels, in quarters: red and green at the top, blue
    // and white at the bottom.
    std::uint32_t quarters();

private:
    // The drawer is made in SetUp, since SDL must be initialised.
    using DrawerMaker = std::function<std::unique_ptr<OpenGLDrawer>()>;
    explicit GlWindow(DrawerMaker maker) : makeDrawer(std::move(maker)) {}

    DrawerMaker makeDrawer;
    std::unique_ptr<OpenGLDrawer> openDrawer;
};

// RGBA pixels; colourOf(x, y) gives their colours.
PixelBuffer makePixels(int width, int height, const std::function<Pixel(int, int)>& colourOf,
                       int alpha = 255);

// The viewport of GL: left, bottom, width, height in pixels of the window.
std::array<GLint, 4> realViewport();
