// SPDX-License-Identifier: Zlib
#pragma once

#include <GL/glew.h>

#include <functional>
#include <memory>
#include <vector>

#include "drawing/Drawer.h"
#include "drawing/GlyphFont.h"
#include "drawing/OpenGLFont.h"
#include "drawing/TextureTable.h"

struct QuadBox;

// Draws in an SDL 1.2 window with OpenGL's fixed pipeline in immediate mode. It fits the virtual
// screen into a window of any size, with black bars where the shapes differ. Without a window or a
// usable driver it has no context, and then every operation does nothing.
//
// Between any two operations the GL state is: model-view matrix mode, the fitted viewport, texture
// unit 0 active, name 0 bound on both units, texturing on for unit 0 and off for unit 1, blending
// on, depth test off. GL objects live to the end of the process.
class OpenGLDrawer : public Drawer {
public:
    // SDL must be initialised. This opens no window and makes no GL call.
    OpenGLDrawer(std::int16_t virtualWidth, std::int16_t virtualHeight);

    bool createWindow(std::uint16_t width, std::uint16_t height, bool fullscreen,
                      std::int32_t multisample) override;
    void resizeWindow(std::uint16_t width, std::uint16_t height) override;
    std::uint32_t createTexture(PixelBuffer pixels, std::uint32_t imageWidth,
                                std::uint32_t imageHeight) override;
    void deleteTexture(std::uint32_t handle) override;
    std::int32_t createPolygon(const float* points, std::int32_t count) override;
    std::uint32_t createShader(const std::string& vertexFile,
                               const std::string& fragmentFile) override;
    bool shadersAvailable() override { return shaderSupport; }
    std::int32_t createFont(const std::string& fileName, float size) override;
    void beginFrame() override;
    void endFrame() override;
    std::unique_ptr<std::uint8_t[]> readScreen() override;
    void setShaderParam(std::uint32_t program, float value) override;
    void setSecondTexture(std::uint32_t handle) override { secondTexture = handle; }
    void setBlendMode(int mode) override;
    void drawTexture(std::uint32_t handle, float x, float y, float scaleX, float scaleY, float r,
                     float g, float b, float a) override;
    void drawTextureRotated(std::uint32_t handle, float x, float y, float angle, float pivotX,
                            float pivotY, float scaleX, float scaleY, float r, float g, float b,
                            float a) override;
    void drawTextureRegion(std::uint32_t handle, float x, float y, float srcX, float srcY,
                           float srcWidth, float srcHeight, float scaleX, float scaleY, float r,
                           float g, float b, float a) override;
    void drawPolygon(std::int32_t polygon, std::uint32_t handle, float x, float y, float scaleX,
                     float scaleY, float r, float g, float b, float a) override;
    void drawText(const std::string& text, std::int32_t font, float x, float y, float wrapWidth,
                  float scale, float r, float g, float b, float a) override;
    void drawGlyphText(const std::string& text, float x, float y, float size, float r, float g,
                       float b, float a) override;
    void drawLine(float x1, float y1, float x2, float y2, float r, float g, float b,
                  float a) override;
    void fillRect(float x, float y, float w, float h, std::uint8_t r, std::uint8_t g,
                  std::uint8_t b, std::uint8_t a) override;
    void fillGradient(float x, float y, float w, float h, std::uint8_t r1, std::uint8_t g1,
                      std::uint8_t b1, std::uint8_t a1, std::uint8_t r2, std::uint8_t g2,
                      std::uint8_t b2, std::uint8_t a2) override;
    void translate(float x, float y) override;
    void setViewport(std::int16_t x, std::int16_t y, std::int16_t w, std::int16_t h) override;
    void resetViewport() override;
    std::int32_t viewportWidth() override { return static_cast<std::int32_t>(viewportW); }
    std::int32_t viewportHeight() override { return static_cast<std::int32_t>(viewportH); }
    std::int32_t viewportX() override { return static_cast<std::int32_t>(viewportLeft); }
    std::int32_t viewportY() override { return static_cast<std::int32_t>(viewportBottom); }
    void beginOffscreen() override;
    void endOffscreen() override;
    std::uint32_t offscreenTexture() override { return offscreenHandle; }
    bool canSupport(int feature) override;
    void setGlyphImage(int index, PixelBuffer pixels, std::uint32_t size) override;

    // Whether textures made from now on are smoothed (the default) or keep hard pixels.
    void setTextureFiltering(bool linear) { textures.setFiltering(linear); }

    // The record of a handle, null for a dead one; valid until the texture is deleted.
    const TextureRecord* textureRecord(std::uint32_t handle) const { return textures.find(handle); }

    // Declares that everything painted from now on is opaque. In blend mode 0 it is then painted
    // without blending: the same pixels, but faster. Callers must restore false.
    void setOpaque(bool opaque);

    // Declares that everything painted from now on is white, so that a texture shows unchanged: the
    // same pixels, but faster. Callers must restore false.
    void setUntinted(bool untinted);

    // Whether the window has several samples a pixel.
    bool isMultisampled() const { return multisampled; }

    // Draws a cell of a sheet of 128 by 128 pixels that the caller has bound to unit 0. u, v, du,
    // dv are texture coordinates of a window that lies 0.001 inside the cell on each side.
    void drawTileQuad(float x, float y, float u, float v, float du, float dv, float scaleX,
                      float scaleY, float r, float g, float b, float a);

    // Paints a background over the whole screen, first in a frame. The first time it calls `paint`;
    // while `number` (0 or above) and the window's size stay the same, it then shows a copy of what
    // `paint` painted. Without memory for a copy it calls `paint` every time. Returns whether there
    // is a copy.
    bool drawBackground(int number, const std::function<void()>& paint);

    // Drops the copy, so that the next drawBackground paints.
    void dropBackground();

private:
    // A fan: element 0 is the centre, the rim follows in order. All four have `count` elements.
    struct Polygon {
        std::vector<float> xs; // units
        std::vector<float> ys;
        std::vector<float> us; // 0 to 1 over the bounding box
        std::vector<float> vs;
        std::int32_t count = 0;
    };

    // The shader functions of the driver, or functions that do nothing.
    struct ShaderCalls {
        PFNGLUNIFORM1IARBPROC uniform1i = [](GLint, GLint) {};
        PFNGLUNIFORM1FARBPROC uniform1f = [](GLint, GLfloat) {};
        PFNGLCREATESHADEROBJECTARBPROC createShaderObject = [](GLenum) -> GLhandleARB { return 0; };
        PFNGLSHADERSOURCEARBPROC shaderSource = [](GLhandleARB, GLsizei, const GLcharARB**,
                                                   const GLint*) {};
        PFNGLCOMPILESHADERARBPROC compileShader = [](GLhandleARB) {};
        PFNGLCREATEPROGRAMOBJECTARBPROC createProgramObject = []() -> GLhandleARB { return 0; };
        PFNGLATTACHOBJECTARBPROC attachObject = [](GLhandleARB, GLhandleARB) {};
        PFNGLLINKPROGRAMARBPROC linkProgram = [](GLhandleARB) {};
        PFNGLGETUNIFORMLOCATIONARBPROC getUniformLocation = [](GLhandleARB, const GLcharARB*) {
            return 0;
        };
        PFNGLUSEPROGRAMOBJECTARBPROC useProgramObject = [](GLhandleARB) {};
    };

    bool openSurface(bool fullscreen, std::int32_t multisample);
    bool startGlew();
    void setFixedState();

    void bindTextures(const TextureRecord& first);
    void unbindTextures();
    void paintTexture(const TextureRecord& record, const QuadBox& source, const QuadBox& target,
                      float r, float g, float b, float a);

    void fitPicture();
    void setPictureViewport();
    void showBackground();
    bool copyBackground(); // false without memory for a copy
    void makeBackgroundBuffer();

    void makeFrameBuffer();
    void sizeFrameBuffer(GLuint pictureName);
    void deleteFrameBuffer();

    void findShaders();

    TextureTable textures;
    std::vector<Polygon> polygons;
    GlyphFont glyphFont;
    std::vector<std::unique_ptr<OpenGLFont>> fonts;
    std::uint32_t secondTexture = 0;
    std::int32_t baseUniform = -1; // locations in the newest program, -1 for none
    std::int32_t secondUniform = -1;
    std::int32_t paramUniform = -1;
    std::uint16_t windowWidth = 1024; // pixels
    std::uint16_t windowHeight = 768; // pixels
    float viewportLeft = 0;           // the picture in the window, in pixels from the bottom left
    float viewportBottom = 0;
    float viewportW = 1024;
    float viewportH = 768;
    int blendMode = 0;
    bool multisampled = false;
    GLuint backgroundCopy = 0;   // GL texture of the picture's size, 0 for none
    GLuint backgroundBuffer = 0; // the copy as a frame buffer, 0 for none
    int backgroundNumber = -1;   // of the copy, -1 for none
    bool canCopyBackground = true;
    GLuint frameBuffer = 0;
    GLuint depthBuffer = 0;            // of the frame buffer
    std::uint32_t offscreenHandle = 0; // the frame buffer's picture in `textures`
    bool offscreenSized = false;       // if not, picture and depth buffer have a single pixel
    bool shaderSupport = true;
    ShaderCalls shaderCalls;
    bool hasContext = false;

    static std::uint32_t lineTexture; // of drawLine, for the whole process
};
