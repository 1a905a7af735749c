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

// A pixel of a picture, each channel 0 to 255.
struct Pixel {
    int r = 0;
    int g = 0;
    int b = 0;

    auto operator<=>(const Pixel&) const = default;
    // Whether no channel is further off than the tolerance.
    bool isNear(const Pixel& other, int tolerance = 2) const;
};
std::ostream& operator<<(std::ostream& out, const Pixel& pixel);

inline constexpr Pixel black = {0, 0, 0};
inline constexpr Pixel white = {255, 255, 255};
inline constexpr Pixel red = {255, 0, 0};
inline constexpr Pixel green = {0, 255, 0};
inline constexpr Pixel blue = {0, 0, 255};

// What a window showed: pixels from the top left corner.
class Picture {
public:
    // The smallest box that holds all pixels that are not black; right and bottom are beyond it.
    struct Box {
        int left, top, right, bottom;
        bool operator==(const Box&) const = default;
    };

    // What has been drawn on a window of this size and not been shown yet.
    static Picture ofWindow(int width, int height);

    Pixel at(int x, int y) const;
    int getWidth() const { return width; }
    int getHeight() const { return height; }
    bool operator==(const Picture& other) const { return bytes == other.bytes; }

    int count(const Pixel& pixel) const;
    Box ink() const;
    bool isBlack() const;
    // Where two pictures of one size differ first, in words for a failed test; empty if nowhere.
    std::string differenceTo(const Picture& other) const;

private:
    Picture(int width, int height);

    int width;
    int height;
    std::vector<std::uint8_t> bytes; // RGB rows from the bottom, packed tight
};
std::ostream& operator<<(std::ostream& out, const Picture::Box& box);

// The one window of a test program, with the drawer of the game on it. The handles of textures are
// kept for the whole process, so a program opens it once, as an environment of its tests.
class GlWindow : public testing::Environment {
public:
    // Opens a window of 1280 by 720 pixels: a unit of the virtual screen is a pixel.
    static constexpr std::uint16_t width = 1280;
    static constexpr std::uint16_t height = 720;

    // Gives the program its window, with a drawer of the type that the tests want.
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

    // A whole frame on a cleared window, read back before it is shown.
    Picture paint(const std::function<void(OpenGLDrawer&)>& scene);

    // A texture of makePixels, smoothed or of hard pixels.
    std::uint32_t makeTexture(int textureWidth, int textureHeight,
                              const std::function<Pixel(int, int)>& colourOf, int alpha = 255,
                              bool smooth = true);
    // The handle of 8 by 8 hard pixels: red, with a green quarter at the top right, a blue one at
    // the bottom left and a white one at the bottom right.
    std::uint32_t quarters();

private:
    // SDL must be up when a drawer is made.
    using DrawerMaker = std::function<std::unique_ptr<OpenGLDrawer>()>;
    explicit GlWindow(DrawerMaker maker) : makeDrawer(std::move(maker)) {}

    DrawerMaker makeDrawer;
    std::unique_ptr<OpenGLDrawer> openDrawer;
};

// RGBA pixels of a size in pixels, each with the colour that colourOf(x, y) gives and an alpha.
PixelBuffer makePixels(int width, int height, const std::function<Pixel(int, int)>& colourOf,
                       int alpha = 255);

// Left, bottom, width, height in pixels of the window, as GL has them.
std::array<GLint, 4> realViewport();
