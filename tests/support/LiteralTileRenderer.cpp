// SPDX-License-Identifier: Zlib
#include "tests/support/LiteralTileRenderer.h"

#include <map>

#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "game/LevelMap.h"
#include "images/EmbeddedImages.h"

static std::uint32_t sheet = 0;
static std::uint32_t outline = 0;

// Calls visit(code, x, y) for each cell of the grid in the window of 21 by 13; x and y in units.
template <typename Visit>
static void forEachTileInView(const LevelMap& map, WorldPoint camera, Visit visit) {
    const int firstColumn = static_cast<int>(camera.x) - 11;
    const int firstRow = static_cast<int>(camera.y) - 6;
    float y = (static_cast<float>(firstRow) - (camera.y - 6)) * 64;
    for (int row = firstRow; row <= firstRow + 12; ++row, y += 64) {
        float x = (static_cast<float>(firstColumn) - (camera.x - 11)) * 64;
        for (int column = firstColumn; column <= firstColumn + 20; ++column, x += 64) {
            if (map.contains(column, row)) visit(map.at(column, row), x, y);
        }
    }
}

// column and row are the cell's on the sheet.
static void drawCell(OpenGLDrawer& drawer, float x, float y, int column, int row) {
    drawer.drawTileQuad(x, y, static_cast<float>(column) * 0.125f + 0.001f,
                        static_cast<float>(row) * 0.125f + 0.001f, 0.123f, 0.123f, 4, 4, 1, 1, 1,
                        1);
}

void LiteralTileRenderer::draw(OpenGLDrawer& drawer, const LevelMap& map, WorldPoint camera) {
    static const std::map<int, int> rockColumns = {
        {0x00, 1}, {0x40, 2}, {0xFE, 3}, {0x60, 4}, {0x80, 5}};
    if (sheet == 0) {
        sheet = createHardSpriteTexture(drawer, spriteTiles);
        outline = createHardSpriteTexture(drawer, spriteOutline);
    }
    forEachTileInView(map, camera, [&](std::uint8_t code, float x, float y) {
        if (code == 0xFF || code == 0xE0) return;
        drawer.drawTexture(outline, x - 4, y - 4, 2, 2, 1, 1, 1, 1);
    });
    glBindTexture(GL_TEXTURE_2D, drawer.textureRecord(sheet)->name);
    forEachTileInView(map, camera, [&](std::uint8_t code, float x, float y) {
        if (code == 0xFF || code == 0xE0) {
            drawCell(drawer, x, y, 7, 7);
        } else {
            const auto found = rockColumns.find(code);
            drawCell(drawer, x, y, found == rockColumns.end() ? 0 : found->second, 0);
        }
        if (code == 0xE0) drawCell(drawer, x, y, drawings / 6 % 3, 7);
    });
    glBindTexture(GL_TEXTURE_2D, 0);
    ++drawings;
}
