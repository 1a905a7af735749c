// SPDX-License-Identifier: Zlib
// Where the picture lies in the window, and the copy of its background. Also drawing into a part of
// the screen or off screen, and reading the screen, which the game does not use.
#include "drawing/OpenGLDrawer.h"

#include <GL/glu.h>
#include <SDL.h>

#include <iostream>

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

bool OpenGLDrawer::drawBackground(int number, float hiddenWidth,
                                  const std::function<void()>& paint) {
    if (!hasContext) return false;
    if (number != backgroundNumber) {
        paint();
        backgroundNumber = -1;
        if (canCopyBackground) copyBackground();
        if (canCopyBackground) backgroundNumber = number;
        return canCopyBackground;
    }
    // Each texel lies on a pixel. Replacing instead of multiplying with white saves time.
    glBindTexture(GL_TEXTURE_2D, backgroundCopy);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    setOpaque(true);
    const float right = width;
    const float bottom = height;
    if (hiddenWidth <= 0) {
        paintQuad({0, 1, 1, 0}, {0, 0, right, bottom});
    } else if (hiddenWidth < right) {
        const float strip = (right - hiddenWidth) / 2;
        const float u = strip / right;
        paintQuad({0, 1, u, 0}, {0, 0, strip, bottom});
        paintQuad({1 - u, 1, 1, 0}, {right - strip, 0, right, bottom});
    }
    setOpaque(false);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glBindTexture(GL_TEXTURE_2D, 0);
    return true;
}

// A copy of the screen is exact. A picture painted off screen may differ by rounding.
void OpenGLDrawer::copyBackground() {
    if (backgroundCopy == 0) {
        backgroundCopy = TextureTable::upload(nullptr, 1, 1, GL_NEAREST, GL_CLAMP_TO_EDGE);
    }
    glGetError(); // forget an earlier error
    glBindTexture(GL_TEXTURE_2D, backgroundCopy);
    glCopyTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, viewportX(), viewportY(), viewportWidth(),
                     viewportHeight(), 0);
    glBindTexture(GL_TEXTURE_2D, 0);
    if (glGetError() == GL_NO_ERROR) return;
    dropBackground();
    canCopyBackground = false;
}

void OpenGLDrawer::dropBackground() {
    glDeleteTextures(1, &backgroundCopy); // GL ignores name 0
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

void OpenGLDrawer::makeFrameBuffer() {
    TextureRecord picture = {0, offscreenWidth, offscreenHeight, 1, 1};
    bool complete = false;
    if (glGenFramebuffersEXT) {
        glGenFramebuffersEXT(1, &frameBuffer);
        glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, frameBuffer);
        glGenRenderbuffersEXT(1, &depthBuffer);
        glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, depthBuffer);
        glRenderbufferStorageEXT(GL_RENDERBUFFER_EXT, GL_DEPTH_COMPONENT, offscreenWidth,
                                 offscreenHeight);
        glFramebufferRenderbufferEXT(GL_FRAMEBUFFER_EXT, GL_DEPTH_ATTACHMENT_EXT,
                                     GL_RENDERBUFFER_EXT, depthBuffer);
        picture.name = TextureTable::upload(nullptr, offscreenWidth, offscreenHeight, GL_LINEAR,
                                            GL_CLAMP_TO_EDGE);
        glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_TEXTURE_2D,
                                  picture.name, 0);
        complete = glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT) == GL_FRAMEBUFFER_COMPLETE_EXT;
        glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    }
    offscreenHandle = textures.add(picture);
    if (!complete) std::cout << "Uh oh." << std::endl;
}

void OpenGLDrawer::deleteFrameBuffer() {
    textures.erase(offscreenHandle);
    if (frameBuffer == 0) return;
    glDeleteFramebuffersEXT(1, &frameBuffer);
    glDeleteRenderbuffersEXT(1, &depthBuffer);
}

void OpenGLDrawer::beginOffscreen() {
    if (!hasContext || frameBuffer == 0) return;
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
