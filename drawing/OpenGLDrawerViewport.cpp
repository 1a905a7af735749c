// SPDX-License-Identifier: Zlib
// Where the picture lies in the window, and the copy of its background. Also drawing into a part of
// the screen or off screen, and reading the screen, which the game does not use.
#include "drawing/OpenGLDrawer.h"

#include <GL/glu.h>
#include <SDL.h>

#include <algorithm>
#include <iostream>
#include <new>

#include "drawing/TexturedQuad.h"

static constexpr int offscreenWidth = 1280; // pixels of the frame buffer's picture
static constexpr int offscreenHeight = 720;

// Sets the units at the right, bottom and top edge of the viewport; the left edge is 0.
static void setUnits(GLdouble right, GLdouble bottom, GLdouble top) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluOrtho2D(0, right, bottom, top);
    glMatrixMode(GL_MODELVIEW);
}

void OpenGLDrawer::fitPicture() {
    const float windowW = windowWidth;
    const float windowH = windowHeight;
    const float virtualAspect = static_cast<float>(height) / static_cast<float>(width);
    const float windowAspect = windowH / windowW;
    viewportLeft = 0;
    viewportBottom = 0;
    viewportW = windowW;
    viewportH = windowH;
    if (virtualAspect > windowAspect) { // the window is wider
        viewportW = static_cast<float>(width) / static_cast<float>(height) * windowH;
        viewportLeft = (windowW - viewportW) * 0.5f;
    } else if (virtualAspect < windowAspect) {
        viewportH = virtualAspect * windowW;
        viewportBottom = (windowH - viewportH) * 0.5f;
    }
    setPictureViewport();
}

void OpenGLDrawer::setPictureViewport() {
    glViewport(viewportX(), viewportY(), viewportWidth(), viewportHeight());
}

// --- the background

bool OpenGLDrawer::drawBackground(int number, const std::function<void()>& paint) {
    if (!hasContext) return false;
    if (number == backgroundNumber) {
        showBackground();
        return true;
    }
    paint();
    if (canCopyBackground) canCopyBackground = copyBackground();
    backgroundNumber = canCopyBackground ? number : -1;
    return canCopyBackground;
}

// With software GL, a quad of the screen's size takes as long as all that is drawn over it. Copying
// between frame buffers takes a quarter of that.
void OpenGLDrawer::showBackground() {
    if (backgroundBuffer != 0) {
        const GLint left = viewportX();
        const GLint bottom = viewportY();
        const GLint w = viewportWidth();
        const GLint h = viewportHeight();
        glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, backgroundBuffer);
        glBlitFramebufferEXT(0, h, w, 0, left, bottom, left + w, bottom + h, GL_COLOR_BUFFER_BIT,
                             GL_NEAREST);
        glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, 0);
        return;
    }
    glBindTexture(GL_TEXTURE_2D, backgroundCopy); // each texel lies on a pixel
    setUntinted(true);
    setOpaque(true);
    paintQuad({0, 0, 1, 1}, {0, 0, static_cast<float>(width), static_cast<float>(height)});
    setOpaque(false);
    setUntinted(false);
    glBindTexture(GL_TEXTURE_2D, 0);
}

// A copy of the screen is exact; a picture painted off screen may differ by rounding. The copy goes
// through main memory, since software GL would first compile a program to copy to a texture. Its
// top row comes first, and blue before red, as in most windows: then the driver copies whole rows.
bool OpenGLDrawer::copyBackground() {
    dropBackground();
    const GLsizei w = viewportWidth();
    const GLsizei h = viewportHeight();
    const std::size_t rowBytes = static_cast<std::size_t>(w) * 4;
    const auto rows = static_cast<std::size_t>(h);
    const PixelBuffer pixels(new (std::nothrow) std::uint8_t[rowBytes * rows]);
    glGetError(); // forget an earlier error
    if (pixels) {
        glReadPixels(viewportX(), viewportY(), w, h, GL_BGRA, GL_UNSIGNED_BYTE, pixels.get());
        for (std::size_t row = 0; row < rows / 2; ++row) {
            std::uint8_t* const lower = pixels.get() + row * rowBytes;
            std::swap_ranges(lower, lower + rowBytes, pixels.get() + (rows - 1 - row) * rowBytes);
        }
        backgroundCopy = TextureTable::upload(nullptr, 1, 1, GL_NEAREST, GL_CLAMP_TO_EDGE);
        glBindTexture(GL_TEXTURE_2D, backgroundCopy);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, w, h, 0, GL_BGRA, GL_UNSIGNED_BYTE, pixels.get());
        glBindTexture(GL_TEXTURE_2D, 0);
        if (glGetError() == GL_NO_ERROR) {
            makeBackgroundBuffer();
            return true;
        }
    }
    dropBackground();
    return false;
}

// Makes a frame buffer of the copy, if the driver can copy from there to the window.
void OpenGLDrawer::makeBackgroundBuffer() {
    if (!glBlitFramebufferEXT || !glGenFramebuffersEXT) return;
    glGenFramebuffersEXT(1, &backgroundBuffer);
    glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, backgroundBuffer);
    glFramebufferTexture2DEXT(GL_READ_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_TEXTURE_2D,
                              backgroundCopy, 0);
    showBackground(); // changes nothing
    if (glGetError() == GL_NO_ERROR) return;
    glDeleteFramebuffersEXT(1, &backgroundBuffer);
    backgroundBuffer = 0;
}

void OpenGLDrawer::dropBackground() {
    if (backgroundBuffer != 0) glDeleteFramebuffersEXT(1, &backgroundBuffer);
    glDeleteTextures(1, &backgroundCopy); // GL ignores name 0
    backgroundBuffer = 0;
    backgroundCopy = 0;
    backgroundNumber = -1;
    canCopyBackground = true;
}

// --- a part of the screen

// Converts units to pixels, cut to 16 bits. Only values far outside any window lose bits.
static std::int16_t toPixels(std::int16_t units, std::int16_t virtualSide, float pixelSide) {
    const float pixels = static_cast<float>(units) / virtualSide * pixelSide;
    return static_cast<std::int16_t>(static_cast<std::int32_t>(pixels));
}

void OpenGLDrawer::setViewport(std::int16_t x, std::int16_t y, std::int16_t w, std::int16_t h) {
    if (!hasContext) return;
    const auto pixelsDown = [this](std::int16_t units) {
        return toPixels(units, height, viewportH);
    };
    const auto pixelsAcross = [this](std::int16_t units) {
        return toPixels(units, width, viewportW);
    };
    const std::int16_t pixelHeight = pixelsDown(h);
    const std::int16_t pixelWidth = pixelsAcross(w);
    const float left = pixelsAcross(x) + viewportLeft;
    const float bottom =
        viewportH - static_cast<float>(pixelsDown(y) + pixelHeight) + viewportBottom;
    glViewport(static_cast<GLint>(left), static_cast<GLint>(bottom), pixelWidth, pixelHeight);
    setUnits(w, h, 0);
}

void OpenGLDrawer::resetViewport() {
    if (!hasContext) return;
    setPictureViewport();
    setUnits(width, height, 0);
}

// --- the picture off screen

// The game never draws off screen, and the picture and its depth buffer take 7 MB. So both are made
// with a single pixel, and get their size when they are first drawn into.
void OpenGLDrawer::makeFrameBuffer() {
    TextureRecord picture = {0, offscreenWidth, offscreenHeight, 1, 1};
    bool complete = false;
    if (glGenFramebuffersEXT) {
        glGenFramebuffersEXT(1, &frameBuffer);
        glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, frameBuffer);
        glGenRenderbuffersEXT(1, &depthBuffer);
        glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, depthBuffer);
        glRenderbufferStorageEXT(GL_RENDERBUFFER_EXT, GL_DEPTH_COMPONENT, 1, 1);
        glFramebufferRenderbufferEXT(GL_FRAMEBUFFER_EXT, GL_DEPTH_ATTACHMENT_EXT,
                                     GL_RENDERBUFFER_EXT, depthBuffer);
        picture.name = TextureTable::upload(nullptr, 1, 1, GL_LINEAR, GL_CLAMP_TO_EDGE);
        glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_TEXTURE_2D,
                                  picture.name, 0);
        complete = glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT) == GL_FRAMEBUFFER_COMPLETE_EXT;
        glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    }
    offscreenHandle = textures.add(picture);
    offscreenSized = false;
    if (!complete) std::cout << "Uh oh." << std::endl;
}

void OpenGLDrawer::deleteFrameBuffer() {
    textures.erase(offscreenHandle);
    if (frameBuffer == 0) return;
    glDeleteFramebuffersEXT(1, &frameBuffer);
    glDeleteRenderbuffersEXT(1, &depthBuffer);
}

void OpenGLDrawer::sizeFrameBuffer(GLuint pictureName) {
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, depthBuffer);
    glRenderbufferStorageEXT(GL_RENDERBUFFER_EXT, GL_DEPTH_COMPONENT, offscreenWidth,
                             offscreenHeight);
    glBindTexture(GL_TEXTURE_2D, pictureName);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, offscreenWidth, offscreenHeight, 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, nullptr);
    glBindTexture(GL_TEXTURE_2D, 0);
    offscreenSized = true;
}

void OpenGLDrawer::beginOffscreen() {
    if (!hasContext || frameBuffer == 0) return;
    if (const TextureRecord* picture = textures.find(offscreenHandle); picture && !offscreenSized) {
        sizeFrameBuffer(picture->name);
    }
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, frameBuffer);
    glDrawBuffer(GL_COLOR_ATTACHMENT0_EXT);
    glViewport(0, 0, width, height);
    // Upside down compared to the window, since textures have their first row at the top.
    setUnits(width, 0, height);
}

void OpenGLDrawer::endOffscreen() {
    if (!hasContext) return;
    if (frameBuffer != 0) glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    resetViewport();
}

// --- reading the screen

std::unique_ptr<std::uint8_t[]> OpenGLDrawer::readScreen() {
    const std::size_t bytes = std::size_t{windowWidth} * windowHeight * 3;
    if (hasContext) SDL_GL_SwapBuffers();
    auto buffer = std::make_unique<std::uint8_t[]>(bytes);
    if (!hasContext) return buffer;
    // By default each row would start at a multiple of 4 bytes; ours are tightly packed.
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, windowWidth, windowHeight, GL_RGB, GL_UNSIGNED_BYTE, buffer.get());
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    return buffer;
}
