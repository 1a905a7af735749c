// SPDX-License-Identifier: Zlib
// Shapes: polygons, lines, rectangles and gradients; blending and translation.
#include "drawing/OpenGLDrawer.h"

#include <cmath>

#include "drawing/TexturedQuad.h"

static constexpr float lineHalfWidth = 4; // units

// --- polygons

// Where each value lies in the range of them all, 0 to 1; 0 if all are equal. Element 0 is the
// centre and does not widen the range.
static std::vector<float> boxFractions(const std::vector<float>& values) {
    float minimum = 10000;
    float maximum = -10000;
    for (std::size_t i = 1; i < values.size(); ++i) {
        // A value that lowers the minimum never raises the maximum, so the maximum of values that
        // only fall stays unset. Keep it so: it decides how such a mesh is textured.
        if (values[i] < minimum) {
            minimum = values[i];
        } else if (values[i] > maximum) {
            maximum = values[i];
        }
    }
    std::vector<float> fractions = values;
    const float span = maximum - minimum;
    for (float& value : fractions) value = span == 0 ? 0 : (value - minimum) / span;
    return fractions;
}

std::int32_t OpenGLDrawer::createPolygon(const float* points, std::int32_t count) {
    Polygon polygon;
    polygon.xs.push_back(0);
    polygon.ys.push_back(0);
    for (std::int32_t i = 0; i < count; ++i) {
        polygon.xs.push_back(points[2 * i]);
        polygon.ys.push_back(points[2 * i + 1]);
        polygon.xs[0] += points[2 * i];
        polygon.ys[0] += points[2 * i + 1];
    }
    if (count > 0) {
        polygon.xs[0] /= static_cast<float>(count);
        polygon.ys[0] /= static_cast<float>(count);
    }
    polygon.us = boxFractions(polygon.xs);
    polygon.vs = boxFractions(polygon.ys);
    polygon.count = static_cast<std::int32_t>(polygon.xs.size());
    polygons.push_back(std::move(polygon));
    return static_cast<std::int32_t>(polygons.size()) - 1;
}

void OpenGLDrawer::drawPolygon(std::int32_t number, std::uint32_t handle, float x, float y,
                               float scaleX, float scaleY, float r, float g, float b, float a) {
    const TextureRecord* record = textures.find(handle);
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

// --- plain shapes

void OpenGLDrawer::drawLine(float x1, float y1, float x2, float y2, float r, float g, float b,
                            float a) {
    const TextureRecord* record = textures.find(lineTexture);
    const float length = std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1));
    if (!record || length == 0) return;
    const float nx = -(y2 - y1) / length * lineHalfWidth;
    const float ny = (x2 - x1) / length * lineHalfWidth;
    glBindTexture(GL_TEXTURE_2D, record->name);
    glColor4f(r, g, b, a);
    glBegin(GL_QUADS);
    quadCorner(0, 0, x1 + nx, y1 + ny);
    quadCorner(0, 1, x2 + nx, y2 + ny);
    quadCorner(1, 1, x2 - nx, y2 - ny);
    quadCorner(1, 0, x1 - nx, y1 - ny);
    glEnd();
    releaseTexture();
}

void OpenGLDrawer::fillRect(float x, float y, float w, float h, std::uint8_t r, std::uint8_t g,
                            std::uint8_t b, std::uint8_t a) {
    fillGradient(x, y, w, h, r, g, b, a, r, g, b, a);
}

void OpenGLDrawer::fillGradient(float x, float y, float w, float h, std::uint8_t r1,
                                std::uint8_t g1, std::uint8_t b1, std::uint8_t a1, std::uint8_t r2,
                                std::uint8_t g2, std::uint8_t b2, std::uint8_t a2) {
    if (!hasContext) return;
    glBindTexture(GL_TEXTURE_2D, 0);
    const bool opaque = a1 == 255 && a2 == 255;
    if (opaque) setOpaque(true);
    glBegin(GL_QUADS);
    glColor4ub(r1, g1, b1, a1);
    glVertex2f(x, y);
    glVertex2f(x + w, y);
    glColor4ub(r2, g2, b2, a2);
    glVertex2f(x + w, y + h);
    glVertex2f(x, y + h);
    glEnd();
    if (opaque) setOpaque(false);
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

void OpenGLDrawer::setOpaque(bool opaque) {
    if (!hasContext) return;
    if (opaque && blendMode == 0) {
        glDisable(GL_BLEND);
    } else {
        glEnable(GL_BLEND);
    }
}

void OpenGLDrawer::setUntinted(bool untinted) {
    if (!hasContext) return;
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, untinted ? GL_REPLACE : GL_MODULATE);
}
