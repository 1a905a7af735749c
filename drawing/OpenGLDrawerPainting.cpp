// SPDX-License-Identifier: Zlib
// Everything that paints.
#include "drawing/OpenGLDrawer.h"

#include <algorithm>
#include <cmath>

static constexpr float lineHalfWidth = 4;       // units
static constexpr float glyphTextUnits = 32;     // side of a glyph in drawText at scale 1
static constexpr float tileSheetSide = 128;     // pixels
static constexpr float tileWindowLoss = 0.002f; // what the window of a tile quad lacks to its cell

static void forgetTexture() {
    glBindTexture(GL_TEXTURE_2D, 0);
}

static void forgetTextureAndColour() {
    glColor4f(1, 1, 1, 1);
    forgetTexture();
}

// --- textured quads

void OpenGLDrawer::bindTextures(const TextureRecord& first) {
    glActiveTextureARB(GL_TEXTURE0_ARB);
    glBindTexture(GL_TEXTURE_2D, first.name);
    shaderCalls.uniform1i(baseUniform, 0);
    if (const TextureRecord* second = textureRecord(secondTexture)) {
        glActiveTextureARB(GL_TEXTURE1_ARB);
        glEnable(GL_TEXTURE_2D);
        glBindTexture(GL_TEXTURE_2D, second->name);
        shaderCalls.uniform1i(secondUniform, 1);
    }
}

void OpenGLDrawer::unbindTextures() {
    glActiveTextureARB(GL_TEXTURE1_ARB);
    forgetTexture();
    glDisable(GL_TEXTURE_2D);
    glActiveTextureARB(GL_TEXTURE0_ARB);
    forgetTexture();
}

static void cornerOfBoth(float u, float v, float x, float y) {
    glMultiTexCoord2fARB(GL_TEXTURE0_ARB, u, v);
    glMultiTexCoord2fARB(GL_TEXTURE1_ARB, u, v);
    glVertex2f(x, y);
}

static void corner(float u, float v, float x, float y) {
    glMultiTexCoord2fARB(GL_TEXTURE0_ARB, u, v);
    glVertex2f(x, y);
}

void OpenGLDrawer::paintTexture(const TextureRecord& record, const Box& source, const Box& target,
                                float r, float g, float b, float a) {
    bindTextures(record);
    glColor4f(r, g, b, a);
    glBegin(GL_QUADS);
    cornerOfBoth(source.left, source.top, target.left, target.top);
    cornerOfBoth(source.right, source.top, target.right, target.top);
    cornerOfBoth(source.right, source.bottom, target.right, target.bottom);
    cornerOfBoth(source.left, source.bottom, target.left, target.bottom);
    glEnd();
    unbindTextures();
}

void OpenGLDrawer::drawTexture(std::uint32_t handle, float x, float y, float scaleX, float scaleY,
                               float r, float g, float b, float a) {
    const TextureRecord* record = textureRecord(handle);
    if (!record) return;
    const Box target = {x, y, x + record->width * scaleX, y + record->height * scaleY};
    paintTexture(*record, {0, 0, record->uExtent, record->vExtent}, target, r, g, b, a);
}

void OpenGLDrawer::drawTextureRegion(std::uint32_t handle, float x, float y, float srcX, float srcY,
                                     float srcWidth, float srcHeight, float scaleX, float scaleY,
                                     float r, float g, float b, float a) {
    const TextureRecord* record = textureRecord(handle);
    if (!record) return;
    const float u = record->uExtent * srcX;
    const float v = record->vExtent * srcY;
    const Box source = {u, v, u + record->uExtent * srcWidth, v + record->vExtent * srcHeight};
    const Box target = {x, y, x + scaleX * srcWidth * record->width,
                        y + scaleY * srcHeight * record->height};
    paintTexture(*record, source, target, r, g, b, a);
}

void OpenGLDrawer::drawTextureRotated(std::uint32_t handle, float x, float y, float angle,
                                      float pivotX, float pivotY, float scaleX, float scaleY,
                                      float r, float g, float b, float a) {
    const TextureRecord* record = textureRecord(handle);
    if (!record) return;
    const float imageWidth = record->width;
    const float imageHeight = record->height;
    glActiveTextureARB(GL_TEXTURE0_ARB);
    glBindTexture(GL_TEXTURE_2D, record->name);
    shaderCalls.uniform1i(baseUniform, 0);
    glPushMatrix();
    glTranslatef(x, y, 0);
    glScalef(scaleX, scaleY, 1);
    glTranslatef(pivotX, pivotY, 0);
    glRotatef(angle, 0, 0, 1);
    glTranslatef(-pivotX, -pivotY, 0);
    glColor4f(r, g, b, a);
    glBegin(GL_QUADS);
    corner(0, 0, 0, 0);
    corner(record->uExtent, 0, imageWidth, 0);
    corner(record->uExtent, record->vExtent, imageWidth, imageHeight);
    corner(0, record->vExtent, 0, imageHeight);
    glEnd();
    glPopMatrix();
    forgetTextureAndColour();
}

void OpenGLDrawer::drawTileQuad(float x, float y, float u, float v, float du, float dv,
                                float scaleX, float scaleY, float r, float g, float b, float a) {
    if (!hasContext) return;
    const float w = (du + tileWindowLoss) * tileSheetSide * scaleX;
    const float h = (dv + tileWindowLoss) * tileSheetSide * scaleY;
    glColor4f(r, g, b, a);
    glBegin(GL_QUADS);
    corner(u, v, x, y);
    corner(u + du, v, x + w, y);
    corner(u + du, v + dv, x + w, y + h);
    corner(u, v + dv, x, y + h);
    glEnd();
}

// --- polygons

void OpenGLDrawer::drawPolygon(std::int32_t number, std::uint32_t handle, float x, float y,
                               float scaleX, float scaleY, float r, float g, float b, float a) {
    const TextureRecord* record = textureRecord(handle);
    if (!record || number < 0 || static_cast<std::size_t>(number) >= polygons.size()) return;
    const Polygon& polygon = polygons[static_cast<std::size_t>(number)];
    const auto vertex = [&polygon](std::size_t i, float secondU, float secondV) {
        glMultiTexCoord2fARB(GL_TEXTURE0_ARB, polygon.us[i], polygon.vs[i]);
        glMultiTexCoord2fARB(GL_TEXTURE1_ARB, secondU, secondV);
        glVertex2f(polygon.xs[i], polygon.ys[i]);
    };
    bindTextures(*record);
    glPushMatrix();
    glTranslatef(x, y, 0);
    glScalef(scaleX, scaleY, 1);
    glColor4f(r, g, b, a);
    glBegin(GL_TRIANGLES);
    const auto rimEnd = static_cast<std::size_t>(polygon.count);
    for (std::size_t i = 1; i < rimEnd; ++i) {
        vertex(0, 0.5f, 1);
        vertex(i, 0, 0);
        vertex(i + 1 == rimEnd ? 1 : i + 1, 1, 0);
    }
    glEnd();
    glColor4f(1, 1, 1, 1);
    glPopMatrix();
    unbindTextures();
}

// --- the glyph font

// The glyph of a character, -1 for none.
static int glyphIndex(char character) {
    static const std::string punctuation = ".,+-!?:_";
    if (character >= 'A' && character <= 'Z') return character - 'A';
    if (character >= 'a' && character <= 'z') return character - 'a';
    if (character >= '0' && character <= '9') return 26 + (character - '0');
    const std::size_t place = punctuation.find(character);
    return place == std::string::npos ? -1 : 36 + static_cast<int>(place);
}

void OpenGLDrawer::drawGlyphText(const std::string& text, float x, float y, float size, float r,
                                 float g, float b, float a) {
    if (!hasContext) return;
    const float trim =
        std::trunc(size / static_cast<float>(glyphs[0].width) * static_cast<float>(glyphPadding));
    const float step = size - trim;
    for (const char character : text) {
        const int index = glyphIndex(character);
        if (index >= 0) {
            glBindTexture(GL_TEXTURE_2D, glyphs[static_cast<std::size_t>(index)].name);
            glColor4f(r, g, b, a);
            glBegin(GL_QUADS);
            corner(0, 0, x, y);
            corner(1, 0, x + size, y);
            corner(1, 1, x + size, y + size);
            corner(0, 1, x, y + size);
            glEnd();
            forgetTextureAndColour();
        }
        x += step;
    }
}

// --- fonts

void OpenGLDrawer::drawText(const std::string& text, std::int32_t font, float x, float y,
                            float wrapWidth, float scale, float r, float g, float b, float a) {
    if (font == 0) {
        drawGlyphText(text, x, y, scale * glyphTextUnits, r, g, b, a);
    } else if (font > 0 && static_cast<std::size_t>(font) <= fonts.size()) {
        fonts[static_cast<std::size_t>(font) - 1]->draw(text, x, y, wrapWidth, scale, r, g, b, a);
    }
}

// --- plain shapes

void OpenGLDrawer::drawLine(float x1, float y1, float x2, float y2, float r, float g, float b,
                            float a) {
    const TextureRecord* record = textureRecord(lineTexture);
    const float length = std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1));
    if (!record || length == 0) return;
    const float nx = -(y2 - y1) / length * lineHalfWidth;
    const float ny = (x2 - x1) / length * lineHalfWidth;
    glBindTexture(GL_TEXTURE_2D, record->name);
    glColor4f(r, g, b, a);
    glBegin(GL_QUADS);
    corner(0, 0, x1 + nx, y1 + ny);
    corner(0, 1, x2 + nx, y2 + ny);
    corner(1, 1, x2 - nx, y2 - ny);
    corner(1, 0, x1 - nx, y1 - ny);
    glEnd();
    forgetTextureAndColour();
}

void OpenGLDrawer::fillRect(float x, float y, float w, float h, std::uint8_t r, std::uint8_t g,
                            std::uint8_t b, std::uint8_t a) {
    fillGradient(x, y, w, h, r, g, b, a, r, g, b, a);
}

void OpenGLDrawer::fillGradient(float x, float y, float w, float h, std::uint8_t r1,
                                std::uint8_t g1, std::uint8_t b1, std::uint8_t a1, std::uint8_t r2,
                                std::uint8_t g2, std::uint8_t b2, std::uint8_t a2) {
    if (!hasContext) return;
    forgetTexture();
    // Opaque paint comes out of blending as it goes in; without, it needs half the time.
    const bool opaque = blendMode == 0 && a1 == 255 && a2 == 255;
    if (opaque) glDisable(GL_BLEND);
    glBegin(GL_QUADS);
    glColor4ub(r1, g1, b1, a1);
    glVertex2f(x, y);
    glVertex2f(x + w, y);
    glColor4ub(r2, g2, b2, a2);
    glVertex2f(x + w, y + h);
    glVertex2f(x, y + h);
    glEnd();
    if (opaque) glEnable(GL_BLEND);
}

void OpenGLDrawer::translate(float x, float y) {
    if (hasContext) glTranslatef(x, y, 0);
}

void OpenGLDrawer::setBlendMode(int mode) {
    if (!hasContext) return;
    switch (mode) {
    case 0:
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glBlendEquation(GL_FUNC_ADD);
        break;
    case 1:
        glBlendFunc(GL_SRC_ALPHA, GL_ONE);
        glBlendEquation(GL_FUNC_ADD);
        break;
    case 2:
        glBlendFunc(GL_DST_COLOR, GL_SRC_ALPHA);
        glBlendEquation(GL_FUNC_SUBTRACT);
        break;
    default: return;
    }
    blendMode = mode;
}

void OpenGLDrawer::clip(float x, float y, float w, float h) {
    if (!hasContext) return;
    const float scaleX = viewportW / static_cast<float>(width); // pixels a unit
    const float scaleY = viewportH / static_cast<float>(height);
    const auto left = static_cast<GLint>(std::floor(x * scaleX)) - 1;
    const auto right = static_cast<GLint>(std::ceil((x + w) * scaleX)) + 1;
    const auto bottom = static_cast<GLint>(std::floor(viewportH - (y + h) * scaleY)) - 1;
    const auto top = static_cast<GLint>(std::ceil(viewportH - y * scaleY)) + 1;
    glEnable(GL_SCISSOR_TEST);
    glScissor(viewportX() + left, viewportY() + bottom, std::max(right - left, 0),
              std::max(top - bottom, 0));
}

void OpenGLDrawer::stopClipping() {
    if (hasContext) glDisable(GL_SCISSOR_TEST);
}
