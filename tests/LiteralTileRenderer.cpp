// SPDX-License-Identifier: Zlib
#include "tests/LiteralTileRenderer.h"

#include <cmath>

#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "game/LevelMap.h"
#include "images/EmbeddedImages.h"

static std::uint32_t sheet = 0;
static std::uint32_t outline = 0;

LiteralTileRenderer::LiteralTileRenderer() {
    cells[0x00] = {0.125f, 0};
    cells[0x20] = {0, 0};
    cells[0x40] = {0.25f, 0};
    cells[0x60] = {0.5f, 0};
    cells[0x80] = {0.625f, 0};
    cells[0xE0] = {0.875f, 0.875f};
    cells[0xFE] = {0.375f, 0};
    cells[0xFF] = {0.875f, 0.875f};
}

std::vector<LiteralTileRenderer::Tile> LiteralTileRenderer::tilesInView(const LevelMap& map,
                                                                        WorldPoint camera) {
    std::vector<Tile> tiles;
    const int firstColumn = static_cast<int>(std::trunc(camera.x)) - 11;
    const int firstRow = static_cast<int>(std::trunc(camera.y)) - 6;
    const auto columns = static_cast<std::int64_t>(map.getWidth());
    const auto rows = static_cast<std::int64_t>(map.getHeight());
    float y = (static_cast<float>(firstRow) - (camera.y - 6)) * 64;
    for (int row = firstRow; row <= firstRow + 12; ++row) {
        float x = (static_cast<float>(firstColumn) - (camera.x - 11)) * 64;
        for (int column = firstColumn; column <= firstColumn + 20; ++column) {
            if (column >= 0 && column < columns && row >= 0 && row < rows) {
                tiles.push_back({map.at(column, row), x, y});
            }
            x += 64;
        }
        y += 64;
    }
    return tiles;
}

void LiteralTileRenderer::drawSheetCell(OpenGLDrawer& drawer, const Tile& tile, SheetCell cell) {
    drawer.drawTileQuad(tile.x, tile.y, cell.u + 0.001f, cell.v + 0.001f, 0.123f, 0.123f, 4, 4, 1,
                        1, 1, 1);
}

void LiteralTileRenderer::draw(OpenGLDrawer& drawer, const LevelMap& map, WorldPoint camera) {
    if (sheet == 0) {
        drawer.setTextureFiltering(false);
        sheet = createSpriteTexture(drawer, spriteTiles);
        outline = createSpriteTexture(drawer, spriteOutline);
        drawer.setTextureFiltering(true);
    }
    const std::vector<Tile> tiles = tilesInView(map, camera);
    for (const Tile& tile : tiles) {
        if (tile.code == 0xFF || tile.code == 0xE0) continue;
        drawer.drawTexture(outline, tile.x - 4, tile.y - 4, 2, 2, 1, 1, 1, 1);
    }
    glActiveTextureARB(GL_TEXTURE0_ARB);
    glBindTexture(GL_TEXTURE_2D, drawer.textureRecord(sheet)->name);
    for (const Tile& tile : tiles) {
        drawSheetCell(drawer, tile, cells[tile.code]);
        if (tile.code == 0xE0) {
            drawSheetCell(drawer, tile, {static_cast<float>(flameFrame) * 0.125f, 0.875f});
        }
    }
    glActiveTextureARB(GL_TEXTURE0_ARB);
    glBindTexture(GL_TEXTURE_2D, 0);
    if (--flameCountdown == 0) {
        flameCountdown = 6;
        flameFrame = (flameFrame + 1) % 3;
    }
}
