// SPDX-License-Identifier: Zlib
// The part of OpenGL's fixed pipeline that the game uses, over WebGL. Corners are transformed here
// and collected. FixedPipeline.js draws them in one go, at the end of a frame or before a call that
// would change how they look. There is one texture unit, no shader and no frame buffer.
#include "web/FixedPipeline.h"

#include <GL/glew.h>
#include <GL/glu.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <tuple>
#include <utility>
#include <vector>

// In FixedPipeline.js.
extern "C" {
struct PaintCommand;
void paintCollected(const void* corners, int cornerCount, const void* indices, int indexCount,
                    const PaintCommand* commands, int commandCount);
int makeTexture();
void deleteTexture(int name);
void fillTexture(int name, int width, int height, const void* pixels);
void setTextureParameter(int name, int parameter, int value);
void setViewport(int x, int y, int width, int height);
void setClearColour(float r, float g, float b, float a);
void clearPicture();
void readPicture(int x, int y, int width, int height, void* pixels);
int takeGraphicsError();
}

// As FixedPipeline.js reads it.
struct PaintCommand {
    std::int32_t texture = 0;
    std::int32_t blends = 0;
    std::int32_t source = GL_ONE;
    std::int32_t target = GL_ZERO;
    std::int32_t equation = GL_FUNC_ADD;
    float constantAlpha = 0;
    float leastAlpha = -1; // pixels up to this opacity are dropped
    std::int32_t indexCount = 0;

    bool paintsLike(const PaintCommand& other) const {
        return texture == other.texture && blends == other.blends && source == other.source &&
               target == other.target && equation == other.equation &&
               constantAlpha == other.constantAlpha && leastAlpha == other.leastAlpha;
    }
};

struct Colour {
    float r = 1, g = 1, b = 1, a = 1;
};

// A texture coordinate of a shape's pixel: x * xStep + y * yStep + start, in pixels of the window.
// A browser may round the corners of shapes to a sixteenth of a pixel, so what it interpolates
// between them is not exact; this is.
struct TexturePlane {
    float xStep, yStep, start;
};

// As FixedPipeline.js reads it.
struct Corner {
    float x, y; // -1 to 1 in the viewport
    TexturePlane u, v;
    Colour colour;
};

static_assert(sizeof(Corner) == 48 && sizeof(PaintCommand) == 32);

struct Viewport {
    float x = 0, y = 0, width = 0, height = 0; // pixels
};

// Of two coordinates: x' = a x + c y + tx, y' = b x + d y + ty.
struct Matrix {
    float a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;

    Matrix operator*(const Matrix& m) const {
        return {a * m.a + c * m.b, b * m.a + d * m.b,        a * m.c + c * m.d,
                b * m.c + d * m.d, a * m.tx + c * m.ty + tx, b * m.tx + d * m.ty + ty};
    }
};

static constexpr std::size_t mostCorners = 1 << 16; // what 16 bits can number
static constexpr std::size_t mostOfShape = 1 << 12; // corners between glBegin and glEnd

// What is collected for the next flush.
static std::vector<Corner> corners;
static std::vector<std::uint16_t> indices; // three corners a triangle, in the commands' order
static std::vector<PaintCommand> commands;

static Viewport viewport;

static Matrix modelView;
static Matrix projection;
static Matrix combined;
static Matrix* chosen = &modelView;
static std::vector<Matrix> stack;
static std::vector<std::pair<PaintCommand, bool>> attributes;

static PaintCommand present;    // all but its index count
static bool testsAlpha = false; // with alphaLimit
static float alphaLimit = 0;
static bool paintsNothing = false; // everything is culled
static bool replaces = false;      // the texture replaces the colour
static int usedUnit = GL_TEXTURE0_ARB;
static Colour colour;
static float textureU = 0, textureV = 0;
static GLenum shape = GL_QUADS;
static std::size_t shapeStart = 0; // index of the first corner since glBegin

void flushPicture() {
    if (!commands.empty()) {
        paintCollected(corners.data(), static_cast<int>(corners.size()), indices.data(),
                       static_cast<int>(indices.size()), commands.data(),
                       static_cast<int>(commands.size()));
    }
    corners.clear();
    indices.clear();
    commands.clear();
}

// --- corners

void glBegin(GLenum mode) {
    shape = mode;
    if (corners.size() > mostCorners - mostOfShape) flushPicture();
    shapeStart = corners.size();
    combined = projection * modelView;
}

void glVertex2f(GLfloat x, GLfloat y) {
    const Matrix& m = combined;
    corners.push_back({m.a * x + m.c * y + m.tx,
                       m.b * x + m.d * y + m.ty,
                       {0, 0, textureU},
                       {0, 0, textureV},
                       replaces ? Colour() : colour});
}

// Fills in the planes of a shape's corners. Until now their `start` holds the corner's own value. A
// shape is a triangle or a parallelogram.
static void spanTexture(Corner* shapeCorners, std::size_t count) {
    const auto pixel = [](const Corner& corner) {
        const double halfWidth = viewport.width / 2.0;
        const double halfHeight = viewport.height / 2.0;
        return std::pair(corner.x * halfWidth + (halfWidth + viewport.x),
                         corner.y * halfHeight + (halfHeight + viewport.y));
    };
    const auto [x, y] = pixel(shapeCorners[0]);
    const auto [nextX, nextY] = pixel(shapeCorners[1]);
    const auto [lastX, lastY] = pixel(shapeCorners[2]);
    const double area = (nextX - x) * (lastY - y) - (nextY - y) * (lastX - x);
    if (area == 0) return; // nothing shows
    for (TexturePlane Corner::*plane : {&Corner::u, &Corner::v}) {
        const double value = (shapeCorners[0].*plane).start;
        const double next = (shapeCorners[1].*plane).start - value;
        const double last = (shapeCorners[2].*plane).start - value;
        const double xStep = (next * (lastY - y) - last * (nextY - y)) / area;
        const double yStep = (last * (nextX - x) - next * (lastX - x)) / area;
        const TexturePlane spanned = {static_cast<float>(xStep), static_cast<float>(yStep),
                                      static_cast<float>(value - xStep * x - yStep * y)};
        for (std::size_t i = 0; i < count; ++i) shapeCorners[i].*plane = spanned;
    }
}

void glEnd() {
    if (paintsNothing) {
        corners.resize(shapeStart);
        return;
    }
    const std::size_t before = indices.size();
    const std::size_t sides = shape == GL_QUADS ? 4 : 3;
    for (std::size_t first = shapeStart; first + sides <= corners.size(); first += sides) {
        spanTexture(&corners[first], sides);
        const auto at = static_cast<std::uint16_t>(first);
        const auto add = [at](int one, int two, int three) {
            for (const int corner : {one, two, three}) {
                indices.push_back(static_cast<std::uint16_t>(at + corner));
            }
        };
        if (sides == 4) add(0, 1, 3);
        if (sides == 4) add(1, 2, 3);
        if (sides == 3) add(0, 1, 2);
    }
    PaintCommand command = present;
    command.leastAlpha = testsAlpha ? alphaLimit : -1;
    if (commands.empty() || !commands.back().paintsLike(command)) commands.push_back(command);
    commands.back().indexCount += static_cast<std::int32_t>(indices.size() - before);
}

void glColor4f(GLfloat r, GLfloat g, GLfloat b, GLfloat a) {
    const auto limit = [](float value) { return std::min(std::max(value, 0.0f), 1.0f); };
    colour = {limit(r), limit(g), limit(b), limit(a)};
}

void glColor4ub(GLubyte r, GLubyte g, GLubyte b, GLubyte a) {
    const auto fraction = [](GLubyte value) { return static_cast<float>(value) / 255.0f; };
    colour = {fraction(r), fraction(g), fraction(b), fraction(a)};
}

static void setTextureCoordinates(GLenum unit, GLfloat u, GLfloat v) {
    if (unit != GL_TEXTURE0_ARB) return;
    textureU = u;
    textureV = v;
}

// --- matrices

void glMatrixMode(GLenum mode) {
    chosen = mode == GL_PROJECTION ? &projection : &modelView;
}

void glLoadIdentity() {
    *chosen = Matrix();
}

void glPushMatrix() {
    stack.push_back(*chosen);
}

void glPopMatrix() {
    if (stack.empty()) return;
    *chosen = stack.back();
    stack.pop_back();
}

void glTranslatef(GLfloat x, GLfloat y, GLfloat /*z*/) {
    *chosen = *chosen * Matrix{1, 0, 0, 1, x, y};
}

void glScalef(GLfloat x, GLfloat y, GLfloat /*z*/) {
    *chosen = *chosen * Matrix{x, 0, 0, y, 0, 0};
}

// About the z axis only.
void glRotatef(GLfloat degrees, GLfloat /*x*/, GLfloat /*y*/, GLfloat /*z*/) {
    const float angle = degrees * std::numbers::pi_v<float> / 180.0f;
    const float s = std::sin(angle);
    const float c = std::cos(angle);
    *chosen = *chosen * Matrix{c, s, -s, c, 0, 0};
}

void gluOrtho2D(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top) {
    const auto scale = [](GLdouble from, GLdouble to) {
        return static_cast<float>(2 / (to - from));
    };
    const auto shift = [](GLdouble from, GLdouble to) {
        return static_cast<float>(-(to + from) / (to - from));
    };
    *chosen = *chosen * Matrix{scale(left, right), 0, 0, scale(bottom, top), shift(left, right),
                               shift(bottom, top)};
}

// --- state

static void enable(GLenum feature, bool on) {
    switch (feature) {
    case GL_BLEND: present.blends = on; break;
    case GL_ALPHA_TEST: testsAlpha = on; break;
    case GL_CULL_FACE: paintsNothing = on; break; // the game culls all or nothing
    default: break;
    }
}

void glEnable(GLenum feature) {
    enable(feature, true);
}

void glDisable(GLenum feature) {
    enable(feature, false);
}

void glBlendFunc(GLenum source, GLenum target) {
    present.source = static_cast<std::int32_t>(source);
    present.target = static_cast<std::int32_t>(target);
}

static void setBlendColour(GLclampf /*r*/, GLclampf /*g*/, GLclampf /*b*/, GLclampf a) {
    present.constantAlpha = a;
}

static void setBlendEquation(GLenum equation) {
    present.equation = static_cast<std::int32_t>(equation);
}

void glAlphaFunc(GLenum /*greater*/, GLclampf limit) {
    alphaLimit = limit;
}

// Of the colour buffer: blending and the alpha test.
void glPushAttrib(GLbitfield /*mask*/) {
    attributes.push_back({present, testsAlpha});
}

void glPopAttrib() {
    if (attributes.empty()) return;
    const std::int32_t texture = present.texture;
    std::tie(present, testsAlpha) = attributes.back();
    present.texture = texture;
    attributes.pop_back();
}

void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    flushPicture();
    viewport = {static_cast<float>(x), static_cast<float>(y), static_cast<float>(width),
                static_cast<float>(height)};
    setViewport(x, y, width, height);
}

void glClearColor(GLclampf r, GLclampf g, GLclampf b, GLclampf a) {
    setClearColour(r, g, b, a);
}

void glClear(GLbitfield /*mask*/) {
    flushPicture();
    clearPicture();
}

void glShadeModel(GLenum /*mode*/) {}
void glClearDepth(GLclampd /*depth*/) {}
void glDepthFunc(GLenum /*function*/) {}
void glHint(GLenum /*target*/, GLenum /*mode*/) {}
void glCullFace(GLenum /*mode*/) {}
void glPixelStorei(GLenum /*parameter*/, GLint /*value*/) {} // rows are packed tightly
void glDrawBuffer(GLenum /*buffer*/) {}

GLenum glGetError() {
    return static_cast<GLenum>(takeGraphicsError());
}

// --- textures

static void chooseUnit(GLenum unit) {
    usedUnit = static_cast<int>(unit);
}

void glBindTexture(GLenum /*target*/, GLuint name) {
    if (usedUnit == GL_TEXTURE0_ARB) present.texture = static_cast<std::int32_t>(name);
}

void glTexEnvi(GLenum /*target*/, GLenum /*parameter*/, GLint mode) {
    replaces = mode == GL_REPLACE;
}

void glGenTextures(GLsizei count, GLuint* names) {
    for (GLsizei i = 0; i < count; ++i) names[i] = static_cast<GLuint>(makeTexture());
}

void glDeleteTextures(GLsizei count, const GLuint* names) {
    flushPicture();
    for (GLsizei i = 0; i < count; ++i) deleteTexture(static_cast<int>(names[i]));
}

void glTexImage2D(GLenum /*target*/, GLint /*level*/, GLint /*kept*/, GLsizei width, GLsizei height,
                  GLint /*border*/, GLenum /*format*/, GLenum /*type*/, const void* pixels) {
    flushPicture();
    fillTexture(present.texture, width, height, pixels);
}

void glTexParameteri(GLenum /*target*/, GLenum parameter, GLint value) {
    flushPicture();
    setTextureParameter(present.texture, static_cast<int>(parameter), value);
}

void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum /*type*/,
                  void* pixels) {
    flushPicture();
    std::vector<std::uint8_t> read(static_cast<std::size_t>(width) *
                                   static_cast<std::size_t>(height) * 4);
    readPicture(x, y, width, height, read.data());
    // Red comes first whatever the format says. Pixels of four bytes are only put back into a
    // texture, where red comes first, too.
    const int bytes = format == GL_RGB ? 3 : 4;
    auto* target = static_cast<std::uint8_t*>(pixels);
    for (std::size_t i = 0; i < read.size(); i += 4) target = std::copy_n(&read[i], bytes, target);
}

// --- what the library for extensions finds

// Others are null, as with a driver that lacks them.
extern "C" {
PFNGLACTIVETEXTUREARBPROC __glewActiveTextureARB = chooseUnit;
PFNGLMULTITEXCOORD2FARBPROC __glewMultiTexCoord2fARB = setTextureCoordinates;
PFNGLBLENDEQUATIONPROC __glewBlendEquation = setBlendEquation;
PFNGLBLENDCOLORPROC __glewBlendColor = setBlendColour;
PFNGLATTACHOBJECTARBPROC __glewAttachObjectARB;
PFNGLBINDFRAMEBUFFEREXTPROC __glewBindFramebufferEXT;
PFNGLBINDRENDERBUFFEREXTPROC __glewBindRenderbufferEXT;
PFNGLBLITFRAMEBUFFEREXTPROC __glewBlitFramebufferEXT;
PFNGLCHECKFRAMEBUFFERSTATUSEXTPROC __glewCheckFramebufferStatusEXT;
PFNGLCOMPILESHADERARBPROC __glewCompileShaderARB;
PFNGLCREATEPROGRAMOBJECTARBPROC __glewCreateProgramObjectARB;
PFNGLCREATESHADEROBJECTARBPROC __glewCreateShaderObjectARB;
PFNGLDELETEFRAMEBUFFERSEXTPROC __glewDeleteFramebuffersEXT;
PFNGLDELETERENDERBUFFERSEXTPROC __glewDeleteRenderbuffersEXT;
PFNGLFRAMEBUFFERRENDERBUFFEREXTPROC __glewFramebufferRenderbufferEXT;
PFNGLFRAMEBUFFERTEXTURE2DEXTPROC __glewFramebufferTexture2DEXT;
PFNGLGENFRAMEBUFFERSEXTPROC __glewGenFramebuffersEXT;
PFNGLGENRENDERBUFFERSEXTPROC __glewGenRenderbuffersEXT;
PFNGLGETUNIFORMLOCATIONARBPROC __glewGetUniformLocationARB;
PFNGLLINKPROGRAMARBPROC __glewLinkProgramARB;
PFNGLRENDERBUFFERSTORAGEEXTPROC __glewRenderbufferStorageEXT;
PFNGLSHADERSOURCEARBPROC __glewShaderSourceARB;
PFNGLUNIFORM1FARBPROC __glewUniform1fARB;
PFNGLUNIFORM1IARBPROC __glewUniform1iARB;
PFNGLUSEPROGRAMOBJECTARBPROC __glewUseProgramObjectARB;
}

GLenum glewInit() {
    return GLEW_OK;
}

const GLubyte* glewGetString(GLenum /*name*/) {
    return reinterpret_cast<const GLubyte*>("of the browser");
}

const GLubyte* glewGetErrorString(GLenum /*failure*/) {
    return reinterpret_cast<const GLubyte*>("");
}
