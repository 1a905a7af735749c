// SPDX-License-Identifier: Zlib
#include "drawing/OpenGLFont.h"

#include <SDL_ttf.h>

#include <algorithm>
#include <iostream>

#include "base/FilePath.h"
#include "drawing/FontFile.h"
#include "drawing/GlyphAtlas.h"
#include "drawing/TextureTable.h"
#include "drawing/TexturedQuad.h"

static const std::string characterSet =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-=.,;:'?()!\"\\/<>_ ";

static constexpr int columnsCounted = 10; // the atlas is at least this many cells wide and high
static constexpr int columnsUsed = 11;    // characters per row of the atlas
static constexpr int rowsUsed = 8;        // for 81 characters
static constexpr int largestCell = 372;   // pixels; keeps the atlas to 64 MiB
static constexpr int linePadding = 4;     // pixels, in each line and again between atlas rows
static constexpr float quadPadding = 2;   // pixels by which a quad extends below its line

OpenGLFont::Library::Library() {
    if (TTF_Init() == -1) std::cout << "OpenGLFont: Could not initialise SDL_ttf.";
}

OpenGLFont::Library::~Library() {
    TTF_Quit();
}

void OpenGLFont::startLibrary() {
    static const Library library;
}

static FilePath findFile(const std::string& fileName) {
    std::vector<FilePath> folders = FilePath::getSystemFontDirectories();
    folders.push_back(FilePath::getDataDirectory().join("fonts"));
    for (const FilePath& folder : folders) {
        const FilePath file = folder.join(fileName);
        if (file.isOrdinaryFile()) return file;
    }
    return {};
}

static FontGlyph placeGlyph(char character, const FontFile::Metrics& metrics, int x, int y) {
    FontGlyph glyph = {character, static_cast<float>(x), static_cast<float>(y)};
    glyph.advance = static_cast<float>(metrics.advance);
    glyph.width = glyph.advance;
    if (metrics.inkWidth() > metrics.advance) { // centre the ink on the advance
        glyph.width = static_cast<float>(metrics.inkWidth());
        glyph.offset = -0.5f * (glyph.width - glyph.advance);
    }
    return glyph;
}

OpenGLFont::OpenGLFont(const std::string& fileName, float size) {
    const FilePath path = findFile(fileName);
    glGetError(); // forget an earlier error
    if (!path.exists()) {
        std::cout << "OpenGLFont: Could not find font: " << fileName << std::endl;
        return;
    }
    const FontFile file(path.text(), static_cast<int>(size));
    valid = file.isOpen() && buildAtlas(file);
    if (!valid) std::cout << "OpenGLFont: Could not load font: " << fileName << std::endl;
}

bool OpenGLFont::buildAtlas(const FontFile& file) {
    int maxAdvance = 0;
    int maxHeight = 0;
    for (const char character : characterSet) {
        const FontFile::Metrics metrics = file.measure(character);
        maxAdvance = std::max(maxAdvance, metrics.advance);
        if (metrics.inkHeight() > maxHeight) maxHeight = metrics.inkHeight() + 1;
    }
    // A broken file may have any size.
    if (std::max({maxAdvance, maxHeight, file.lineHeight()}) > largestCell) return false;
    const int linePixels = std::max(file.lineHeight(), maxHeight) + linePadding;
    const int rowStep = linePixels + linePadding;
    GlyphAtlas atlas(columnsCounted * std::max(linePixels, maxAdvance), columnsUsed * maxAdvance,
                     rowsUsed * rowStep);

    int cell = 0;
    for (const char character : characterSet) {
        const FontFile::Metrics metrics = file.measure(character);
        const int left = cell % columnsUsed * maxAdvance;
        const int top = cell / columnsUsed * rowStep;
        ++cell;
        if (const FontFile::Surface ink = file.render(character)) {
            // All characters of a row are on one baseline.
            atlas.copy(*ink, left, top + maxHeight - metrics.maxY - 1);
        }
        glyphs.push_back(placeGlyph(character, metrics, left, top));
    }
    atlasSize = atlas.getSize();
    const auto side = static_cast<std::uint32_t>(atlasSize);
    texture = TextureTable::upload(atlas.getPixels(), side, side, GL_LINEAR, GL_REPEAT);
    lineHeight = static_cast<float>(linePixels);
    return true;
}

void OpenGLFont::draw(const std::string& text, float x, float y, float wrapWidth, float scale,
                      float r, float g, float b, float a) const {
    glBindTexture(GL_TEXTURE_2D, texture);
    glColor4f(r, g, b, a);
    for (const TextLine& line : breakIntoLines(glyphs, text, wrapWidth, scale)) {
        float pen = x;
        for (const FontGlyph* glyph : line) {
            if (glyph) paintGlyph(*glyph, pen + glyph->offset, y, scale);
            pen += scale * advanceOf(glyphs, glyph);
        }
        y += lineHeight;
    }
    releaseTexture();
}

void OpenGLFont::paintGlyph(const FontGlyph& glyph, float x, float y, float scale) const {
    const auto side = static_cast<float>(atlasSize);
    const float quadHeight = lineHeight + quadPadding;
    const QuadBox source = {glyph.x / side, glyph.y / side, (glyph.x + glyph.width) / side,
                            (glyph.y + quadHeight) / side};
    paintQuad(source, {x, y, x + glyph.width * scale, y + quadHeight * scale});
}
