// SPDX-License-Identifier: Zlib
// Drawing into a picture or into a part of the screen, reading the screen, and shader programs. The
// game uses none of it.
#include "drawing/OpenGLDrawer.h"

#include <GL/glu.h>
#include <SDL.h>

#include <iostream>

#include "base/FilePath.h"

static constexpr int featureShaders = 0;
static constexpr int featureFrameBuffer = 1;

bool OpenGLDrawer::canSupport(int feature) {
    switch (feature) {
    case featureShaders: {
        const bool supported = glUniform1iARB != nullptr;
        std::cout << "canSupport(Shaders) => " << supported << std::endl;
        return supported;
    }
    case featureFrameBuffer:
        std::cout << "canSupport(FrameBuffer) => " << true << std::endl;
        return true;
    default: return false;
    }
}

// The text of a file up to its first zero byte; empty for what cannot be read, a folder included.
static std::string readText(const std::string& path) {
    std::ifstream file = FilePath(path).open();
    std::string text;
    std::getline(file, text, '\0');
    return text;
}

std::uint32_t OpenGLDrawer::createShader(const std::string& vertexFile,
                                         const std::string& fragmentFile) {
    if (!hasContext || !shaderSupport) return 0;
    const auto compile = [this](GLenum kind, const std::string& file) {
        const GLhandleARB shader = shaderCalls.createShaderObject(kind);
        const std::string text = readText(file);
        const char* source = text.c_str();
        shaderCalls.shaderSource(shader, 1, &source, nullptr);
        shaderCalls.compileShader(shader);
        return shader;
    };
    const GLhandleARB vertexShader = compile(GL_VERTEX_SHADER_ARB, vertexFile);
    const GLhandleARB fragmentShader = compile(GL_FRAGMENT_SHADER_ARB, fragmentFile);
    const GLhandleARB program = shaderCalls.createProgramObject();
    shaderCalls.attachObject(program, vertexShader);
    shaderCalls.attachObject(program, fragmentShader);
    shaderCalls.linkProgram(program);
    std::cout << "OpenGLDrawer Shader InfoLog:" << std::endl
              << "----------------------------" << std::endl
              << vertexFile << ":" << std::endl
              << fragmentFile << ":" << std::endl;
    baseUniform = shaderCalls.getUniformLocation(program, "base");
    secondUniform = shaderCalls.getUniformLocation(program, "second");
    paramUniform = shaderCalls.getUniformLocation(program, "shaderParam");
    return program;
}

void OpenGLDrawer::setShaderParam(std::uint32_t program, float value) {
    if (!hasContext) return;
    shaderCalls.useProgramObject(program);
    shaderCalls.uniform1f(paramUniform, value);
}

// The units at the right, the bottom and the top edge of the viewport; 0 is at the left.
static void setUnits(GLdouble right, GLdouble bottom, GLdouble top) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluOrtho2D(0, right, bottom, top);
    glMatrixMode(GL_MODELVIEW);
}

void OpenGLDrawer::beginOffscreen() {
    if (!hasContext || frameBuffer == 0) return;
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, frameBuffer);
    glDrawBuffer(GL_COLOR_ATTACHMENT0_EXT);
    glViewport(0, 0, width, height);
    // Upside down against the window's: textures are painted with their first row at the top.
    setUnits(width, 0, height);
}

void OpenGLDrawer::endOffscreen() {
    if (!hasContext) return;
    if (frameBuffer != 0) glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    resetViewport();
}

// Units as pixels, of which 16 bits are kept: the rest is lost only far outside any window.
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

std::unique_ptr<std::uint8_t[]> OpenGLDrawer::readScreen() {
    const std::size_t bytes = std::size_t{windowWidth} * windowHeight * 3;
    if (hasContext) SDL_GL_SwapBuffers();
    auto buffer = std::make_unique<std::uint8_t[]>(bytes);
    if (!hasContext) return buffer;
    // The driver would begin each row at a multiple of 4 bytes; the buffer holds them tight.
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, windowWidth, windowHeight, GL_RGB, GL_UNSIGNED_BYTE, buffer.get());
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    return buffer;
}
