// SPDX-License-Identifier: Zlib
// Set-up: the window, the GL context, and the start and end of a frame.
#include "drawing/OpenGLDrawer.h"

#include <SDL.h>

#include <cstring>
#include <iostream>
#include <string>

#include "drawing/SpriteTexture.h"
#include "images/EmbeddedImages.h"
#include "platform/Platform.h"

std::uint32_t OpenGLDrawer::lineTexture = 0;

OpenGLDrawer::OpenGLDrawer(std::int16_t virtualWidth, std::int16_t virtualHeight)
    : Drawer(virtualWidth, virtualHeight) {
    OpenGLFont::startLibrary();
}

static void setAttribute(SDL_GLattr attribute, int value, const char* meaning) {
    if (SDL_GL_SetAttribute(attribute, value) < 0) {
        std::cout << "OpenGLDrawer: Could not set " << meaning << "..." << std::endl;
    }
}

static void setColourSizes(const SDL_VideoInfo* video) {
    if (video && video->vfmt && video->vfmt->BitsPerPixel == 16) {
        std::cout << "OpenGLDrawer: Display is 16bit." << std::endl;
        setAttribute(SDL_GL_RED_SIZE, 5, "red pixel size to 5");
        setAttribute(SDL_GL_GREEN_SIZE, 5, "green pixel size to 5");
        setAttribute(SDL_GL_BLUE_SIZE, 5, "blue pixel size to 5");
        return;
    }
    std::cout << "OpenGLDrawer: Display is 32bit." << std::endl;
    setAttribute(SDL_GL_RED_SIZE, 8, "red pixel size to 8");
    setAttribute(SDL_GL_GREEN_SIZE, 8, "green pixel size to 8");
    setAttribute(SDL_GL_BLUE_SIZE, 8, "blue pixel size to 8");
    setAttribute(SDL_GL_ALPHA_SIZE, 8, "alpha pixel size to 8");
}

static void setAttributes(const SDL_VideoInfo* video, std::int32_t multisample) {
    setColourSizes(video);
    setAttribute(SDL_GL_DEPTH_SIZE, 16, "depth size to 16");
    setAttribute(SDL_GL_DOUBLEBUFFER, 1, "double buffering");
    setAttribute(SDL_GL_SWAP_CONTROL, 1, "vertical sync");
    if (multisample > 0) {
        setAttribute(SDL_GL_MULTISAMPLEBUFFERS, 1, "multi sample buffers");
        setAttribute(SDL_GL_MULTISAMPLESAMPLES, multisample, "multi sample samples");
    }
}

// Whether there is a screen to open a window on.
static bool hasScreen() {
    char driver[16] = "";
    return SDL_VideoDriverName(driver, sizeof driver) && std::strcmp(driver, "dummy") != 0;
}

bool OpenGLDrawer::createWindow(std::uint16_t width, std::uint16_t height, bool fullscreen,
                                std::int32_t multisample) {
    windowWidth = width;
    windowHeight = height;
    if (!openSurface(fullscreen, multisample) || !startGlew()) {
        std::cout << "OpenGLDrawer: Could not open window: " << SDL_GetError() << std::endl;
        SDL_Event quit = {};
        quit.type = SDL_QUIT;
        SDL_PushEvent(&quit);
        return false;
    }
    hasContext = true;
    findShaders();
    glyphFont.makeBlank();
    glViewport(0, 0, windowWidth, windowHeight);
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    fitPicture();
    makeFrameBuffer();
    setFixedState();
    return true;
}

void OpenGLDrawer::resizeWindow(std::uint16_t width, std::uint16_t height) {
    windowWidth = width;
    windowHeight = height;
    if (!hasContext) return;
    glyphFont.makeBlank();
    fitPicture();
    dropBackground();
    deleteFrameBuffer();
    makeFrameBuffer();
    setFixedState();
}

// Opens the window, with fewer samples or pixels if necessary, and stores its actual size.
bool OpenGLDrawer::openSurface(bool fullscreen, std::int32_t multisample) {
    const SDL_VideoInfo* video = SDL_GetVideoInfo();
    setAttributes(video, multisample);
    multisampled = multisample > 0;
    Uint32 flags = SDL_OPENGL;
    if (fullscreen) {
        flags |= SDL_FULLSCREEN;
    } else {
        Platform::setEnvironment("SDL_VIDEO_CENTERED", "1");
    }
    // Until the first mode is set, this is the desktop's size.
    const int desktopWidth = video ? video->current_w : 0;
    const int desktopHeight = video ? video->current_h : 0;

    const bool mayShrink =
        fullscreen && (desktopWidth != windowWidth || desktopHeight != windowHeight);
    const auto open = [&](const std::string& samples) -> const SDL_Surface* {
        const SDL_Surface* opened = SDL_SetVideoMode(windowWidth, windowHeight, 0, flags);
        if (opened || !mayShrink || !hasScreen()) return opened;
        std::cout << "OpenGLDrawer: No window of " << windowWidth << " by " << windowHeight
                  << samples << ", trying the desktop's size." << std::endl;
        return SDL_SetVideoMode(desktopWidth, desktopHeight, 0, flags);
    };

    const std::string samples = " with " + std::to_string(multisample) + " samples";
    const SDL_Surface* surface = open(multisample > 0 ? samples : "");
    if (!surface && multisample > 0 && hasScreen()) {
        std::cout << "OpenGLDrawer: No window" << samples << ", trying without." << std::endl;
        SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, 0);
        SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, 0);
        multisampled = false;
        surface = open("");
    }
    if (!surface) return false;
    windowWidth = static_cast<std::uint16_t>(surface->w);
    windowHeight = static_cast<std::uint16_t>(surface->h);
    return true;
}

// Finds the driver's entry points. An error of the library is only printed: on some systems it
// finds all that is needed and still reports one.
bool OpenGLDrawer::startGlew() {
    const GLenum failure = glewInit();
    if (failure != GLEW_OK) {
        std::cout << "GLEW error: " << glewGetErrorString(failure) << std::endl;
    } else {
        std::cout << "Using GLEW version: " << glewGetString(GLEW_VERSION) << std::endl;
    }
    if (glActiveTextureARB && glMultiTexCoord2fARB && glBlendEquation) return true;
    SDL_SetError("the OpenGL driver lacks multitexturing or blend equations");
    return false;
}

void OpenGLDrawer::setFixedState() {
    resetViewport();
    glLoadIdentity();
    glShadeModel(GL_SMOOTH);
    glClearDepth(1.0);
    glDisable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glEnable(GL_TEXTURE_2D);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_BLEND);
    if (lineTexture == 0) lineTexture = createSpriteTexture(*this, spriteLine);
}

void OpenGLDrawer::beginFrame() {
    if (!hasContext) return;
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
}

void OpenGLDrawer::endFrame() {
    if (!hasContext) return;
    SDL_GL_SwapBuffers();
    secondTexture = 0;
}
