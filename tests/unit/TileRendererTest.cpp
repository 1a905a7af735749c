// SPDX-License-Identifier: Zlib
// The level on the screen is the same, to the pixel, as with everything drawn.
#include "game/TileRenderer.h"

#include <map>
#include <random>

#include "drawing/SpriteTexture.h"
#include "game/LevelMap.h"
#include "images/EmbeddedImages.h"
#include "tests/support/GlWindow.h"

static GlWindow* const window = GlWindow::open();

// --- a level with nothing left out

static std::uint32_t sheet = 0;
static std::uint32_t outline = 0;
static int drawings = 0; // so far

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

// An outline for every rock in view, a quad for every cell, the clear ones too, and a second quad
// for a flame.
static void drawEverything(OpenGLDrawer& drawer, const LevelMap& map, WorldPoint camera) {
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

// --- the game's

// A level, width by height tiles; codeOf(column, row) gives the codes.
static LevelMap makeLevel(int width, int height, const std::function<int(int, int)>& codeOf) {
    LoadedImage picture;
    picture.pixels = makePixels(width, height, [&](int x, int y) {
        return Pixel{codeOf(x, y), 77, 200};
    });
    picture.width = static_cast<std::uint32_t>(width);
    picture.height = static_cast<std::uint32_t>(height);
    return LevelMap(picture);
}

// Random codes; `openness` percent of the cells are empty or flames.
static LevelMap makeNastyLevel(int width, int height, int openness, unsigned seed) {
    static constexpr int rocks[] = {0,    0x20, 0x40, 0x60, 0x80, 0xFE,
                                    0x10, 0x01, 0xDF, 0xE1, 0xFD, 0x7F};
    std::mt19937 random(seed);
    return makeLevel(width, height, [&](int, int) {
        if (static_cast<int>(random() % 100) < openness) return random() % 3 ? 0xFF : 0xE0;
        return rocks[random() % std::size(rocks)];
    });
}

static Picture paint(const std::function<void(OpenGLDrawer&)>& drawLevel) {
    return window->paint([&](OpenGLDrawer& drawer) {
        // No two rows are alike, so that a tile in the wrong place shows.
        drawer.fillGradient(0, 0, 640, 720, 255, 0, 200, 255, 0, 255, 50, 255);
        drawer.fillGradient(640, 0, 640, 720, 20, 200, 255, 255, 255, 190, 0, 255);
        drawLevel(drawer);
        // What is painted afterwards still has its colour and alpha.
        drawer.drawTexture(window->quarters(), 16, 0, 1, 1, 1, 1, 1, 0.5f);
        drawer.fillRect(0, 0, 8, 8, 0, 0, 0, 255);
        drawer.drawTexture(window->quarters(), 0, 0, 1, 1, 0.5f, 1, 1, 0.5f);
    });
}

// Compares the next drawing of both renderers, which animate their flames in step. The picture
// begins rowsAbove rows below the window's upper edge.
static void expectSame(const LevelMap& map, WorldPoint camera, int rowsAbove = 0) {
    static TileRenderer tiles;
    const Picture shortened = paint([&](auto& drawer) { tiles.draw(drawer, map, camera); });
    const Picture whole = paint([&](auto& drawer) { drawEverything(drawer, map, camera); });
    ASSERT_EQ(shortened.differenceTo(whole), "") << "camera " << camera.x << ", " << camera.y;
    ASSERT_TRUE(shortened.at(1, rowsAbove + 1).isNear({64, 0, 0}));
}

static float fractionOf(std::mt19937& random) {
    static constexpr float fractions[] = {0, 0.5f, 0.99999f, 0.0001f, 0.0078f, 0.33333f};
    return fractions[random() % std::size(fractions)];
}

TEST(TileRenderer, ShowsRandomLevelsAsWithEverythingDrawn) {
    std::mt19937 random(7);
    for (const int openness : {0, 4, 15, 50, 100}) {
        const LevelMap map = makeNastyLevel(34, 26, openness, static_cast<unsigned>(openness));
        for (int i = 0; i < 12; ++i) {
            // From well outside the grid on one side to well outside on the other.
            const float x = static_cast<float>(random() % 64) - 14 + fractionOf(random);
            const float y = static_cast<float>(random() % 44) - 9 - fractionOf(random);
            expectSame(map, {x, y});
        }
    }
}

TEST(TileRenderer, ShowsEdgesAndSmallLevelsAsWithEverythingDrawn) {
    const auto hole = [](int x, int y) { return x == 2 && y == 2 ? 0xFF : 0x60; };
    const LevelMap small[] = {LevelMap(LoadedImage{}), makeLevel(1, 1, hole),
                              makeLevel(5, 5, hole)};
    for (const WorldPoint camera :
         {WorldPoint{0, 0}, WorldPoint{-0.5f, -0.5f}, WorldPoint{2, 2}, WorldPoint{-7.99f, 6.01f},
          WorldPoint{11.25f, 5.75f}, WorldPoint{-1e6f, 3}, WorldPoint{1e6f, 1e6f}}) {
        for (const LevelMap& map : small) expectSame(map, camera);
    }
    const LevelMap wide = makeNastyLevel(9000, 14, 20, 3);
    for (const float x : {8990.37f, 8999.99f, 9009.5f, 4096.001f}) expectSame(wide, {x, 7.3f});
}

// With samples, a pixel of this picture lies on a clear texel beside a tile's cell of the sheet.
TEST(TileRenderer, ShowsASmallPictureAsWithEverythingDrawn) {
    window->drawer().resizeWindow(800, 600);
    expectSame(makeNastyLevel(34, 26, 0, 0), {13.67770957f, 17.84655952f}, 195);
    window->drawer().resizeWindow(GlWindow::width, GlWindow::height);
}
