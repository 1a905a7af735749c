// SPDX-License-Identifier: Zlib
#include "tests/support/LiteralTileRenderer.h"

#include <cmath>
#include <functional>

#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "game/LevelMap.h"
#include "images/EmbeddedImages.h"

static std::uint32_t sheet = 0;
static std::uint32_t outline = 0;

// The code of each cell of the grid in the window of 21 by 13, and its place on the screen in
// units.
using Visit = std::function<void(std::uint8_t code, float x, float y)>;

static void forEachTileInView(const LevelMap& map, WorldPoint camera, const Visit& visit) {
    const int firstColumn = static_cast<int>(std::trunc(camera.x)) - 11;
    const int firstRow = static_cast<int>(std::trunc(camera.y)) - 6;
    const auto columns = static_cast<std::int64_t>(map.getWidth());
    const auto rows = static_cast<std::int64_t>(map.getHeight());
    float y = (static_cast<float>(firstRow) - (camera.y - 6)) * 64;
    for (int row = firstRow; row <= firstRow + 12; ++row, y += 64) {
        float x = (static_cast<float>(firstColumn) - (camera.x - 11)) * 64;
        for (int column = firstColumn; column <= firstColumn + 20; ++column, x += 64) {
            const bool inside = column >= 0 && column < columns && row >= 0 && row < rows;
            if (inside) visit(map.at(column, row), x, y);
        }
    }
}

// Column and row are the cell's on the sheet.
static void drawCell(OpenGLDrawer& drawer, float x, float y, int column, int row) {
    drawer.drawTileQuad(x, y, static_cast<float>(column) * 0.125f + 0.001f,
                        static_cast<float>(row) * 0.125f + 0.001f, 0.123f, 0.123f, 4, 4, 1, 1, 1,
                        1);
}

static void drawBase(OpenGLDrawer& drawer, std::uint8_t code, float x, float y) {
    switch (code) {
    case 0x00: return drawCell(drawer, x, y, 1, 0);
    case 0x40: return drawCell(drawer, x, y, 2, 0);
    case 0xFE: return drawCell(drawer, x, y, 3, 0);
    case 0x60: return drawCell(drawer, x, y, 4, 0);
    case 0x80: return drawCell(drawer, x, y, 5, 0);
    case 0xE0:
    case 0xFF: return drawCell(drawer, x, y, 7, 7);
    default: return drawCell(drawer, x, y, 0, 0);
    }
}

void LiteralTileRenderer::draw(OpenGLDrawer& drawer, const LevelMap& map, WorldPoint camera) {
    if (sheet == 0) {
        sheet = createHardSpriteTexture(drawer, spriteTiles);
        outline = createHardSpriteTexture(drawer, spriteOutline);
    }
    forEachTileInView(map, camera, [&](std::uint8_t code, float x, float y) {
        if (code == 0xFF || code == 0xE0) return;
        drawer.drawTexture(outline, x - 4, y - 4, 2, 2, 1, 1, 1, 1);
    });
    glActiveTextureARB(GL_TEXTURE0_ARB);
    glBindTexture(GL_TEXTURE_2D, drawer.textureRecord(sheet)->name);
    forEachTileInView(map, camera, [&](std::uint8_t code, float x, float y) {
        drawBase(drawer, code, x, y);
        if (code == 0xE0) drawCell(drawer, x, y, drawings / 6 % 3, 7);
    });
    glBindTexture(GL_TEXTURE_2D, 0);
    ++drawings;
}
