// SPDX-License-Identifier: Zlib
// The level on the screen is the same, to the pixel, as with everything drawn.
#include "game/TileRenderer.h"

#include <random>

#include "game/LevelMap.h"
#include "tests/support/GlWindow.h"
#include "tests/support/LiteralPlay.h"

static GlWindow* const window = GlWindow::open();

// A level of a size in tiles; codeOf(column, row) gives the codes.
static LevelMap makeLevel(int width, int height, const std::function<int(int, int)>& codeOf) {
    LoadedImage picture;
    picture.pixels = makePixels(width, height, [&](int x, int y) {
        return Pixel{codeOf(x, y), 77, 200};
    });
    picture.width = static_cast<std::uint32_t>(width);
    picture.height = static_cast<std::uint32_t>(height);
    return LevelMap(picture);
}

// Random codes; `openness` of 100 cells are empty or flames.
static LevelMap makeNastyLevel(int width, int height, int openness, unsigned seed) {
    static constexpr int rocks[] = {0,    0x20, 0x40, 0x60, 0x80, 0xFE,
                                    0x10, 0x01, 0xDF, 0xE1, 0xFD, 0x7F};
    std::mt19937 random(seed);
    return makeLevel(width, height, [&](int, int) {
        if (static_cast<int>(random() % 100) < openness) return random() % 3 ? 0xFF : 0xE0;
        return rocks[random() % std::size(rocks)];
    });
}

template <typename Renderer>
static Picture paint(Renderer& renderer, const LevelMap& map, WorldPoint camera) {
    return window->paint([&](OpenGLDrawer& drawer) {
        // No two rows alike, so that a tile in the wrong place shows.
        drawer.fillGradient(0, 0, 640, 720, 255, 0, 200, 255, 0, 255, 50, 255);
        drawer.fillGradient(640, 0, 640, 720, 20, 200, 255, 255, 255, 190, 0, 255);
        renderer.draw(drawer, map, camera);
    });
}

// Compares the next drawing of both renderers, which animate their flames in step.
static void expectSame(const LevelMap& map, WorldPoint camera) {
    static TileRenderer tiles;
    static LiteralTileRenderer literalTiles;
    const Picture shortened = paint(tiles, map, camera);
    ASSERT_EQ(shortened.differenceTo(paint(literalTiles, map, camera)), "")
        << "camera " << camera.x << ", " << camera.y;
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
