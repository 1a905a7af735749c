// SPDX-License-Identifier: Zlib
#include "game/TileRenderer.h"

#include <GL/glew.h>

#include <cmath>

#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "game/LevelMap.h"
#include "game/TileSheet.h"
#include "images/EmbeddedImages.h"

static constexpr int windowColumns = 21; // tiles that can be in view
static constexpr int windowRows = 13;
static constexpr int framePeriod = 6; // drawings per flame frame

static constexpr float outlineReach = 4;    // units by which an outline extends beyond its tile
static constexpr float outlineScale = 2;    // 36 pixels to 72 units
static constexpr float cellInset = 0.001f;  // texture coordinates cut off a cell on each side,
static constexpr float cellWindow = 0.123f; // so that its neighbours never show
static constexpr float tileScale = 4;       // 16 pixels to 64 units

// Textures, made by the first drawing of the process.
static std::uint32_t sheetTexture = 0;
static std::uint32_t outlineTexture = 0;

static void loadTextures(OpenGLDrawer& drawer) {
    sheetTexture = createHardSpriteTexture(drawer, spriteTiles);
    outlineTexture = createHardSpriteTexture(drawer, spriteOutline);
}

// Calls visit(column, row, x, y) for each cell of the window that lies in the grid, row by row
// from the top; x and y are the cell's top left corner in units.
template <typename Visit>
static void forEachVisibleCell(const LevelMap& map, WorldPoint camera, Visit visit) {
    const int firstColumn = cellOf(camera.x) - cameraColumns;
    const int firstRow = cellOf(camera.y) - cameraRows;
    const float left = (static_cast<float>(firstColumn) - (camera.x - cameraColumns)) * tileUnits;
    float y = (static_cast<float>(firstRow) - (camera.y - cameraRows)) * tileUnits;
    for (int row = firstRow; row < firstRow + windowRows; ++row, y += tileUnits) {
        float x = left;
        for (int column = firstColumn; column < firstColumn + windowColumns;
             ++column, x += tileUnits) {
            if (map.contains(column, row)) visit(column, row, x, y);
        }
    }
}

// Whether rock tiles, which are opaque, will cover the whole outline of a cell.
static bool isSurroundedByRock(const LevelMap& map, int column, int row) {
    for (int y = row - 1; y <= row + 1; ++y) {
        for (int x = column - 1; x <= column + 1; ++x) {
            if (!map.contains(x, y) || !LevelMap::isRock(map.at(x, y))) return false;
        }
    }
    return true;
}

// A column or row of the sheet in texture coordinates.
static constexpr float sheetPlace(int cell) {
    return static_cast<float>(cell) / tileSheetSide;
}

TileRenderer::TileRenderer() : cells{} {
    for (const TileStyle& style : rockStyles) {
        cells[style.code] = {sheetPlace(style.column), sheetPlace(style.row)};
    }
    for (std::size_t frame = 0; frame < flameCells.size(); ++frame) {
        flameCells[frame] = {sheetPlace(static_cast<int>(frame)), sheetPlace(flameRow)};
    }
}

void TileRenderer::draw(Drawer& drawer, const LevelMap& map, WorldPoint camera) {
    auto& painter = static_cast<OpenGLDrawer&>(drawer);
    if (sheetTexture == 0) loadTextures(painter);
    painter.setUntinted(true);
    drawOutlines(painter, map, camera);
    drawTiles(painter, map, camera);
    painter.setUntinted(false);
    stepFlames();
}

// With several samples a pixel, a sample at a tile's edge may lie on a clear texel beside the
// tile's cell of the sheet. The outline then shows between two rocks. So every outline must be
// drawn, and rocks must be blended.
static bool showsSeams(const OpenGLDrawer& drawer) {
    return drawer.isMultisampled();
}

void TileRenderer::drawOutlines(OpenGLDrawer& drawer, const LevelMap& map,
                                WorldPoint camera) const {
    const bool everywhere = showsSeams(drawer);
    forEachVisibleCell(map, camera, [&](int column, int row, float x, float y) {
        if (!LevelMap::isRock(map.at(column, row))) return;
        if (!everywhere && isSurroundedByRock(map, column, row)) return;
        drawer.drawTexture(outlineTexture, x - outlineReach, y - outlineReach, outlineScale,
                           outlineScale, 1, 1, 1, 1);
    });
}

void TileRenderer::drawTiles(OpenGLDrawer& drawer, const LevelMap& map, WorldPoint camera) const {
    const TextureRecord* sheet = drawer.textureRecord(sheetTexture);
    if (!sheet) return;
    glActiveTextureARB(GL_TEXTURE0_ARB);
    glBindTexture(GL_TEXTURE_2D, sheet->name);
    const bool rockIsOpaque = !showsSeams(drawer);
    drawer.setOpaque(rockIsOpaque);
    forEachVisibleCell(map, camera, [&](int column, int row, float x, float y) {
        const std::uint8_t code = map.at(column, row);
        if (code == LevelMap::empty) return;
        const bool flame = code == LevelMap::flame;
        const SheetCell& cell =
            flame ? flameCells[static_cast<std::size_t>(flameFrame)] : cells[code];
        if (flame) drawer.setOpaque(false);
        drawer.drawTileQuad(x, y, cell.u + cellInset, cell.v + cellInset, cellWindow, cellWindow,
                            tileScale, tileScale, 1, 1, 1, 1);
        if (flame) drawer.setOpaque(rockIsOpaque);
    });
    drawer.setOpaque(false);
    glBindTexture(GL_TEXTURE_2D, 0);
}

void TileRenderer::stepFlames() {
    if (--flameCountdown > 0) return;
    flameCountdown = framePeriod;
    flameFrame = (flameFrame + 1) % 3;
}
