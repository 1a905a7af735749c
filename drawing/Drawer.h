// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "drawing/LoadedImage.h"

// The abstract drawing interface. The application owns the one drawer; each frame it calls
// beginFrame, lets the current screen paint, and calls endFrame. Every call paints at once, so the
// order of the calls is the painter's order. Main thread only. OpenGLDrawer is the implementation.
//
// Words used below:
// - Unit: coordinates are floats in units of the virtual screen, width by height of them, whatever
//   the window's size. The origin is the top left corner, x grows to the right, y downward.
// - Texture handle: 0 is none; a handle is good from createTexture to deleteTexture. Drawing with a
//   dead handle paints nothing.
// - Font number: 0 is the glyph font, whose 44 images setGlyphImage gives; 1, 2, ... are the fonts
//   of createFont in order of creation.
// - Polygon number: from 0, in order of createPolygon.
// - Float colour (r, g, b, a): 0 to 1, multiplied with the texture. Byte colour: 0 to 255.
// - Scale: units a pixel of the texture; a negative one mirrors about x or y.
//
// Order of calls: construct, createWindow, setGlyphImage, then the frames. Textures and fonts may
// be made between beginFrame and endFrame. Nothing but the second texture is reset by a frame: who
// sets a blend mode sets mode 0 again.
class Drawer {
public:
    // Size of the virtual screen in units.
    Drawer(std::int16_t virtualWidth, std::int16_t virtualHeight)
        : width(virtualWidth), height(virtualHeight) {}
    Drawer(const Drawer&) = delete;
    Drawer& operator=(const Drawer&) = delete;
    virtual ~Drawer() = default;

    // Opens the window, sizes in pixels; multisample is a number of samples, 0 for none. False if
    // no window could be opened; every later call is then safe and paints nothing.
    virtual bool createWindow(std::uint16_t windowWidth, std::uint16_t windowHeight,
                              bool fullscreen, std::int32_t multisample) = 0;
    // Rebuilds what depends on the size of a window that the caller has changed already. The images
    // of the glyph font are lost.
    virtual void resizeWindow(std::uint16_t windowWidth, std::uint16_t windowHeight) = 0;

    // Takes RGBA pixels, sizes in pixels from 1 to 65535; gives a handle, 0 for null pixels.
    virtual std::uint32_t createTexture(PixelBuffer pixels, std::uint32_t imageWidth,
                                        std::uint32_t imageHeight) = 0;
    virtual void deleteTexture(std::uint32_t handle) = 0;

    // Makes a mesh around the mean of `count` points, given as x, y pairs (2 x count floats).
    virtual std::int32_t createPolygon(const float* points, std::int32_t count) = 0;

    // Compiles and links two files of shader source; gives the program, 0 without shader support.
    virtual std::uint32_t createShader(const std::string& /*vertexFile*/,
                                       const std::string& /*fragmentFile*/) {
        return 0;
    }
    virtual bool shadersAvailable() { return false; }

    // Makes a font from a file of the font folders, size in pixels; 0 if that fails.
    virtual std::int32_t createFont(const std::string& fileName, float size) = 0;

    // Clears the picture and the translation; shows the picture and forgets the second texture.
    virtual void beginFrame() = 0;
    virtual void endFrame() = 0;

    // The window's pixels after showing the picture: red, green, blue, rows from the bottom, packed
    // tight (3 x window width x window height bytes).
    virtual std::unique_ptr<std::uint8_t[]> readScreen() = 0;

    // Makes the shader program current (0: none) and sets its parameter. The shortcuts for opaque
    // rectangles, gradients and tiles assume that none is: an alpha that a program gives is lost.
    virtual void setShaderParam(std::uint32_t /*program*/, float /*value*/) {}
    // Second texture of drawTexture, drawTextureRegion and drawPolygon until endFrame.
    virtual void setSecondTexture(std::uint32_t /*handle*/) {}
    // 0 normal, 1 additive, 2 subtractive; others are ignored.
    virtual void setBlendMode(int /*mode*/) {}

    // The whole texture with its top left corner at x, y.
    virtual void drawTexture(std::uint32_t handle, float x, float y, float scaleX, float scaleY,
                             float r, float g, float b, float a) = 0;
    // As drawTexture, turned clockwise by degrees about a pivot in pixels of the image.
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
    // Text with its top left corner at x, y, wrapped at wrapWidth units. Font 0 is drawGlyphText of
    // size 32 x scale, which does not wrap; a font that was never made paints nothing.
    virtual void drawText(const std::string& text, std::int32_t font, float x, float y,
                          float wrapWidth, float scale, float r, float g, float b, float a) = 0;
    // Text in the glyph font, each glyph size by size units.
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

    // Draws into a part of the virtual screen, with the origin at its top left corner; and into the
    // whole of it again.
    virtual void setViewport(std::int16_t x, std::int16_t y, std::int16_t w, std::int16_t h) = 0;
    virtual void resetViewport() = 0;

    // Where the picture lies in the window, in window pixels; the margins are left and bottom.
    virtual std::int32_t viewportWidth() = 0;
    virtual std::int32_t viewportHeight() = 0;
    virtual std::int32_t viewportX() = 0;
    virtual std::int32_t viewportY() = 0;

    // Draws into a picture of its own, and into the window again; and the handle of that picture.
    virtual void beginOffscreen() {}
    virtual void endOffscreen() {}
    virtual std::uint32_t offscreenTexture() { return 0; }

    // 0 asks for shaders, 1 for drawing off screen.
    virtual bool canSupport(int /*feature*/) { return false; }

    // Gives glyph 0 to 43 its image, size by size pixels; null pixels leave it as it was.
    virtual void setGlyphImage(int index, PixelBuffer pixels, std::uint32_t size) = 0;

    const std::int16_t width;  // units
    const std::int16_t height; // units
};
