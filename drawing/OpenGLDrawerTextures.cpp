// SPDX-License-Identifier: Zlib
// Textures, textured quads and text.
#include "drawing/OpenGLDrawer.h"

#include "drawing/TexturedQuad.h"

static constexpr float glyphTextUnits = 32;     // side of a glyph in drawText at scale 1
static constexpr float tileSheetSide = 128;     // pixels
static constexpr float tileWindowLoss = 0.002f; // cell minus window, in texture coordinates

std::uint32_t OpenGLDrawer::createTexture(PixelBuffer pixels, std::uint32_t imageWidth,
                                          std::uint32_t imageHeight) {
    return hasContext ? textures.create(std::move(pixels), imageWidth, imageHeight) : 0;
}

void OpenGLDrawer::deleteTexture(std::uint32_t handle) {
    textures.erase(handle);
}

// --- textured quads

void OpenGLDrawer::bindTextures(const TextureRecord& first) {
    glActiveTextureARB(GL_TEXTURE0_ARB);
    glBindTexture(GL_TEXTURE_2D, first.name);
    shaderCalls.uniform1i(baseUniform, 0);
    if (const TextureRecord* second = textures.find(secondTexture)) {
        glActiveTextureARB(GL_TEXTURE1_ARB);
        glEnable(GL_TEXTURE_2D);
        glBindTexture(GL_TEXTURE_2D, second->name);
        shaderCalls.uniform1i(secondUniform, 1);
    }
}

void OpenGLDrawer::unbindTextures() {
    glActiveTextureARB(GL_TEXTURE1_ARB);
    glBindTexture(GL_TEXTURE_2D, 0);
    glDisable(GL_TEXTURE_2D);
    glActiveTextureARB(GL_TEXTURE0_ARB);
    glBindTexture(GL_TEXTURE_2D, 0);
}

static void cornerOfBoth(float u, float v, float x, float y) {
    glMultiTexCoord2fARB(GL_TEXTURE0_ARB, u, v);
    glMultiTexCoord2fARB(GL_TEXTURE1_ARB, u, v);
    glVertex2f(x, y);
}

void OpenGLDrawer::paintTexture(const TextureRecord& record, const QuadBox& source,
                                const QuadBox& target, float r, float g, float b, float a) {
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
    const TextureRecord* record = textures.find(handle);
    if (!record) return;
    const QuadBox target = {x, y, x + record->width * scaleX, y + record->height * scaleY};
    paintTexture(*record, {0, 0, record->uExtent, record->vExtent}, target, r, g, b, a);
}

void OpenGLDrawer::drawTextureRegion(std::uint32_t handle, float x, float y, float srcX, float srcY,
                                     float srcWidth, float srcHeight, float scaleX, float scaleY,
                                     float r, float g, float b, float a) {
    const TextureRecord* record = textures.find(handle);
    if (!record) return;
    const float u = record->uExtent * srcX;
    const float v = record->vExtent * srcY;
    const QuadBox source = {u, v, u + record->uExtent * srcWidth, v + record->vExtent * srcHeight};
    const QuadBox target = {x, y, x + scaleX * srcWidth * record->width,
                            y + scaleY * srcHeight * record->height};
    paintTexture(*record, source, target, r, g, b, a);
}

void OpenGLDrawer::drawTextureRotated(std::uint32_t handle, float x, float y, float angle,
                                      float pivotX, float pivotY, float scaleX, float scaleY,
                                      float r, float g, float b, float a) {
    const TextureRecord* record = textures.find(handle);
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
    paintQuad({0, 0, record->uExtent, record->vExtent}, {0, 0, imageWidth, imageHeight});
    glPopMatrix();
    releaseTexture();
}

void OpenGLDrawer::drawTileQuad(float x, float y, float u, float v, float du, float dv,
                                float scaleX, float scaleY, float r, float g, float b, float a) {
    if (!hasContext) return;
    const float w = (du + tileWindowLoss) * tileSheetSide * scaleX;
    const float h = (dv + tileWindowLoss) * tileSheetSide * scaleY;
    glColor4f(r, g, b, a);
    paintQuad({u, v, u + du, v + dv}, {x, y, x + w, y + h});
}

// --- text

void OpenGLDrawer::setGlyphImage(int index, PixelBuffer pixels, std::uint32_t size) {
    if (hasContext) glyphFont.setImage(index, std::move(pixels), size, textures.getFilter());
}

void OpenGLDrawer::drawGlyphText(const std::string& text, float x, float y, float size, float r,
                                 float g, float b, float a) {
    if (hasContext) glyphFont.draw(text, x, y, size, r, g, b, a);
}

std::int32_t OpenGLDrawer::createFont(const std::string& fileName, float size) {
    if (!hasContext) return 0;
    auto font = std::make_unique<OpenGLFont>(fileName, size);
    if (!font->isValid()) return 0;
    fonts.push_back(std::move(font));
    return static_cast<std::int32_t>(fonts.size());
}

void OpenGLDrawer::drawText(const std::string& text, std::int32_t font, float x, float y,
                            float wrapWidth, float scale, float r, float g, float b, float a) {
    if (font == 0) {
        drawGlyphText(text, x, y, scale * glyphTextUnits, r, g, b, a);
    } else if (font > 0 && static_cast<std::size_t>(font) <= fonts.size()) {
        fonts[static_cast<std::size_t>(font) - 1]->draw(text, x, y, wrapWidth, scale, r, g, b, a);
    }
}
