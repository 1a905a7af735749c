// SPDX-License-Identifier: Zlib
#include "tests/support/LiteralPlay.h"

#include <map>

#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "images/EmbeddedImages.h"

// --- the tiles

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

// --- the rest

static std::uint32_t sky = 0;
static std::int32_t font = 0;
static std::array<std::uint32_t, 4> rings;

static void load(OpenGLDrawer& drawer) {
    sky = createSpriteTexture(drawer, spriteSky);
    font = drawer.createFont("MarsNeedsCunnilingus.ttf", 64);
    for (std::size_t i = 0; i < rings.size(); ++i) {
        rings[i] = createHardSpriteTexture(drawer, spriteRing + i);
    }
}

void LiteralPlay::draw(OpenGLDrawer& drawer) {
    if (sky == 0) load(drawer);
    if (!finished) {
        player.update(held, map);
        if (player.isAirborne()) trail.spawn(player.position());
        if (player.kickSpeed() >= 1.5f) {
            finished = true;
            player.startWarp();
        }
    }
    drawWorld(drawer);
    drawSpeed(drawer);
    if (finished) drawVortex(drawer);
}

void LiteralPlay::drawWorld(OpenGLDrawer& drawer) {
    const WorldPoint camera = cameraFor(player.position());
    drawer.fillGradient(0, 0, 1280, 720, 112, 96, 128, 255, 255, 255, 255, 255);
    drawer.setBlendMode(1);
    drawer.drawTexture(sky, 0, 0, 1.25f, 1.25f, 1, 1, 1, 0.5f);
    drawer.setBlendMode(0);
    clouds.draw(drawer, camera);
    tiles.draw(drawer, map, camera);
    trail.draw(drawer, camera);
    player.draw(drawer);
}

void LiteralPlay::drawSpeed(OpenGLDrawer& drawer) const {
    drawer.drawText("Speed:", font, 384, 40, 1024, 1, 1, 1, 1, 1);
    drawer.drawText("88mph", font, 1024, 112, 512, 1, 1, 1, 1, 1);
    drawer.fillRect(640, 32, 608, 64, 255, 255, 255, 255);
    drawer.fillRect(644, 36, 600, 56, 0, 0, 0, 255);
    drawer.fillRect(648, 40, player.kickSpeed() * 300, 48, 255, 0, 0, 255);
    drawer.fillRect(1098, 28, 8, 72, 255, 255, 255, 255);
}

void LiteralPlay::drawVortex(OpenGLDrawer& drawer) {
    static constexpr float colours[6][3] = {{1, 0, 0}, {0, 0.75f, 0}, {1, 0.5f, 0},
                                            {0, 0, 1}, {1, 1, 0},     {1, 0, 1}};
    const float scale = vortexSize * 200;
    const auto angle = static_cast<float>(vortexDrawings * 4 % 360);
    for (std::size_t i = 0; i < rings.size(); ++i) {
        const float* colour = colours[(vortexDrawings / 8 + i) % 6];
        drawer.drawTextureRotated(rings[i], 640 - scale * 4, 360 - scale * 4, angle, 4, 4, scale,
                                  scale, colour[0], colour[1], colour[2], 1);
    }
    vortexSize += 0.005f;
    ++vortexDrawings;
}
