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
static std::uint32_t sheetName = 0; // GL name of the sheet
static std::uint32_t outlineTexture = 0;

static void loadTextures(OpenGLDrawer& drawer) {
    sheetTexture = createHardSpriteTexture(drawer, spriteTiles);
    if (const TextureRecord* record = drawer.textureRecord(sheetTexture)) sheetName = record->name;
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
    cells[LevelMap::empty] = {sheetPlace(7), sheetPlace(7)}; // the clear cell
    cells[LevelMap::flame] = cells[LevelMap::empty];
}

void TileRenderer::draw(Drawer& drawer, const LevelMap& map, WorldPoint camera) {
    if (sheetTexture == 0) loadTextures(static_cast<OpenGLDrawer&>(drawer));
    // The same as multiplying with white, and cheaper.
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    drawOutlines(drawer, map, camera);
    drawTiles(drawer, map, camera);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    stepFlames();
}

void TileRenderer::drawOutlines(Drawer& drawer, const LevelMap& map, WorldPoint camera) const {
    forEachVisibleCell(map, camera, [&](int column, int row, float x, float y) {
        if (!LevelMap::isRock(map.at(column, row)) || isSurroundedByRock(map, column, row)) return;
        drawer.drawTexture(outlineTexture, x - outlineReach, y - outlineReach, outlineScale,
                           outlineScale, 1, 1, 1, 1);
    });
}

void TileRenderer::drawTiles(Drawer& drawer, const LevelMap& map, WorldPoint camera) const {
    if (sheetTexture == 0) return;
    auto& painter = static_cast<OpenGLDrawer&>(drawer);
    glActiveTextureARB(GL_TEXTURE0_ARB);
    glBindTexture(GL_TEXTURE_2D, sheetName);
    painter.setOpaque(true); // only flames are blended
    forEachVisibleCell(map, camera, [&](int column, int row, float x, float y) {
        const std::uint8_t code = map.at(column, row);
        if (code == LevelMap::empty) return;
        const bool flame = code == LevelMap::flame;
        const SheetCell& cell =
            flame ? flameCells[static_cast<std::size_t>(flameFrame)] : cells[code];
        if (flame) painter.setOpaque(false);
        painter.drawTileQuad(x, y, cell.u + cellInset, cell.v + cellInset, cellWindow, cellWindow,
                             tileScale, tileScale, 1, 1, 1, 1);
        if (flame) painter.setOpaque(true);
    });
    painter.setOpaque(false);
    glActiveTextureARB(GL_TEXTURE0_ARB);
    glBindTexture(GL_TEXTURE_2D, 0);
}

void TileRenderer::stepFlames() {
    if (--flameCountdown > 0) return;
    flameCountdown = framePeriod;
    flameFrame = (flameFrame + 1) % 3;
}
