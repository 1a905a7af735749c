// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "drawing/LoadedImage.h"

// The abstract drawing interface; OpenGLDrawer implements it. The application owns the one drawer.
// Each frame it calls beginFrame, lets the current screen paint, and calls endFrame. Every call
// paints at once, so later calls cover earlier ones. Main thread only.
//
// Terms:
// - Unit: coordinates are floats in units of the virtual screen, which is width by height units
//   whatever the window's size. The origin is the top left corner, x grows to the right, y
//   downward.
// - Texture handle: 0 means no texture. A handle is valid from createTexture to deleteTexture;
//   drawing with any other handle paints nothing.
// - Font number: 0 is the glyph font, whose 44 images come from setGlyphImage; 1, 2, ... are the
//   fonts of createFont in order of creation.
// - Polygon number: from 0, in order of creation.
// - Float colour (r, g, b, a): 0 to 1, multiplied with the texture. Byte colour: 0 to 255.
// - Scale: units per pixel of the texture; a negative scale mirrors about x or y.
//
// Order of calls: construct, createWindow, setGlyphImage, then the frames. Textures and fonts may
// be made between beginFrame and endFrame. A frame resets the second texture and the translation
// but not the blend mode: callers must restore blend mode 0.
class Drawer {
public:
    // Size of the virtual screen in units.
    Drawer(std::int16_t virtualWidth, std::int16_t virtualHeight)
        : width(virtualWidth), height(virtualHeight) {}
    Drawer(const Drawer&) = delete;
    Drawer& operator=(const Drawer&) = delete;
    virtual ~Drawer() = default;

    // Opens the window, sizes in pixels; multisample is the number of samples, 0 for none. Returns
    // false if no window could be opened; every later call is then safe and paints nothing.
    virtual bool createWindow(std::uint16_t windowWidth, std::uint16_t windowHeight,
                              bool fullscreen, std::int32_t multisample) = 0;
    // Rebuilds what depends on the window's size after the caller has changed it, sizes in pixels.
    // The images of the glyph font are lost.
    virtual void resizeWindow(std::uint16_t windowWidth, std::uint16_t windowHeight) = 0;

    // Takes ownership of RGBA pixels, sizes in pixels from 1 to 65535. Returns the handle; 0 for
    // null pixels, and if the texture cannot be made.
    virtual std::uint32_t createTexture(PixelBuffer pixels, std::uint32_t imageWidth,
                                        std::uint32_t imageHeight) = 0;
    virtual void deleteTexture(std::uint32_t handle) = 0;

    // Makes a mesh around the mean of `count` points, given as x, y pairs. Returns its number.
    virtual std::int32_t createPolygon(const float* points, std::int32_t count) = 0;

    // Compiles and links two shader source files. Returns the program, 0 without shader support.
    virtual std::uint32_t createShader(const std::string& /*vertexFile*/,
                                       const std::string& /*fragmentFile*/) {
        return 0;
    }
    virtual bool shadersAvailable() { return false; }

    // Makes a font from a file in the font folders, size in pixels. Returns its number, 0 on
    // failure.
    virtual std::int32_t createFont(const std::string& fileName, float size) = 0;

    virtual void beginFrame() = 0; // clears the picture and the translation
    virtual void endFrame() = 0;   // shows the picture and forgets the second texture

    // Shows the picture and returns the window's pixels: red, green, blue, rows from the bottom,
    // tightly packed (3 x window width x window height bytes).
    virtual std::unique_ptr<std::uint8_t[]> readScreen() = 0;

    // Makes the shader program current (0: none) and sets its parameter. Opaque rectangles and
    // gradients are not blended, nor are tiles as a rule, so an alpha that a program gives them is
    // lost.
    virtual void setShaderParam(std::uint32_t /*program*/, float /*value*/) {}
    // Sets the second texture of drawTexture, drawTextureRegion and drawPolygon until endFrame.
    virtual void setSecondTexture(std::uint32_t /*handle*/) {}
    // 0 normal, 1 additive, 2 subtractive; other values are ignored.
    virtual void setBlendMode(int /*mode*/) {}

    // The whole texture with its top left corner at x, y.
    virtual void drawTexture(std::uint32_t handle, float x, float y, float scaleX, float scaleY,
                             float r, float g, float b, float a) = 0;
    // As drawTexture, turned clockwise by angle degrees about a pivot in pixels of the image.
    virtual void drawTextureRotated(std::uint32_t handle, float x, float y, float angle,
                                    float pivotX, float pivotY, float scaleX, float scaleY, float r,
                                    float g, float b, float a) = 0;
    // A part of the texture, given in fractions of the image from 0 to 1.
    virtual void drawTextureRegion(std::uint32_t handle, float x, float y, float srcX, float srcY,
                                   float srcWidth, float srcHeight, float scaleX, float scaleY,
                                   float r, float g, float b, float a) = 0;
    // A mesh, textured over its bounding box.
    virtual void drawPolygon(std::int32_t polygon, std::uint32_t handle, float x, float y,
                             float scaleX, float scaleY, float r, float g, float b, float a) = 0;
    // Text with its top left corner at x, y, wrapped at wrapWidth units. Font 0 means drawGlyphText
    // with size 32 x scale, which does not wrap; an unknown font paints nothing.
    virtual void drawText(const std::string& text, std::int32_t font, float x, float y,
                          float wrapWidth, float scale, float r, float g, float b, float a) = 0;
    // Text in the glyph font on one line, each glyph size by size units.
    virtual void drawGlyphText(const std::string& text, float x, float y, float size, float r,
                               float g, float b, float a) = 0;
    // A soft line, 8 units wide.
    virtual void drawLine(float x1, float y1, float x2, float y2, float r, float g, float b,
                          float a) = 0;
    virtual void fillRect(float x, float y, float w, float h, std::uint8_t r, std::uint8_t g,
                          std::uint8_t b, std::uint8_t a) = 0;
    // Shaded from the first colour at the top edge to the second at the bottom edge.
    virtual void fillGradient(float x, float y, float w, float h, std::uint8_t r1, std::uint8_t g1,
                              std::uint8_t b1, std::uint8_t a1, std::uint8_t r2, std::uint8_t g2,
                              std::uint8_t b2, std::uint8_t a2) = 0;

    // Moves the origin until the next beginFrame.
    virtual void translate(float x, float y) = 0;

    // Restricts drawing to a part of the virtual screen, with the origin at its top left corner.
    // resetViewport ends it.
    virtual void setViewport(std::int16_t x, std::int16_t y, std::int16_t w, std::int16_t h) = 0;
    virtual void resetViewport() = 0;

    // Where the picture lies in the window, in window pixels; x and y are the left and bottom
    // margin.
    virtual std::int32_t viewportWidth() = 0;
    virtual std::int32_t viewportHeight() = 0;
    virtual std::int32_t viewportX() = 0;
    virtual std::int32_t viewportY() = 0;

    // Drawing between the first two goes into a texture instead of the window; the third returns
    // the handle of that texture, 0 for none.
    virtual void beginOffscreen() {}
    virtual void endOffscreen() {}
    virtual std::uint32_t offscreenTexture() { return 0; }

    // 0 asks for shaders, 1 for drawing off screen.
    virtual bool canSupport(int /*feature*/) { return false; }

    // Sets the image of glyph 0 to 43, size by size pixels, and takes ownership of it; null pixels
    // change nothing.
    virtual void setGlyphImage(int index, PixelBuffer pixels, std::uint32_t size) = 0;

    const std::int16_t width;  // units
    const std::int16_t height; // units
};
