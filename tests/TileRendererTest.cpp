// SPDX-License-Identifier: Zlib
// The level on the screen: the same to the pixel as with everything drawn, and each tile exact.
#include "game/TileRenderer.h"

#include <cmath>
#include <random>
#include <set>

#include "drawing/ImageLoader.h"
#include "game/LevelMap.h"
#include "images/EmbeddedImages.h"
#include "tests/GlWindow.h"
#include "tests/GoalRun.h"
#include "tests/LiteralTileRenderer.h"

static GlWindow* const window = GlWindow::open();

// A level of a size in tiles, with the code that codeOf(column, row) gives.
static LevelMap makeLevel(int width, int height, const std::function<int(int, int)>& codeOf) {
    LoadedImage picture;
    picture.pixels = makePixels(width, height, [&](int x, int y) {
        return Pixel{codeOf(x, y), 77, 200};
    });
    picture.width = static_cast<std::uint32_t>(width);
    picture.height = static_cast<std::uint32_t>(height);
    return LevelMap(picture);
}

// Something behind the tiles that is different everywhere, so that nothing can hide in it.
static void drawBackground(OpenGLDrawer& drawer) {
    drawer.fillGradient(0, 0, 640, 720, 255, 0, 200, 255, 0, 255, 50, 255);
    drawer.fillGradient(640, 0, 640, 720, 20, 200, 255, 255, 255, 190, 0, 255);
}

// Both ways of drawing a level, kept in step.
class Renderers {
public:
    // What differs between the two pictures, in words; empty if they are the same.
    std::string difference(const LevelMap& map, WorldPoint camera) {
        const Picture shortened = window->paint([&](OpenGLDrawer& drawer) {
            drawBackground(drawer);
            tiles.draw(drawer, map, camera);
        });
        const Picture literal = window->paint([&](OpenGLDrawer& drawer) {
            drawBackground(drawer);
            literalTiles.draw(drawer, map, camera);
        });
        const std::string difference = shortened.differenceTo(literal);
        if (difference.empty()) return "";
        return "camera " + std::to_string(camera.x) + ", " + std::to_string(camera.y) + ": " +
               difference;
    }

private:
    TileRenderer tiles;
    LiteralTileRenderer literalTiles;
};

// Random codes; `openness` of 100 cells are open or burn.
static LevelMap makeNastyLevel(int width, int height, int openness, unsigned seed) {
    static const std::vector<int> rocks = {0,    0x20, 0x40, 0x60, 0x80, 0xFE,
                                           0x10, 0x01, 0xDF, 0xE1, 0xFD, 0x7F};
    std::mt19937 random(seed);
    return makeLevel(width, height, [&](int, int) {
        if (static_cast<int>(random() % 100) < openness) return random() % 3 ? 0xFF : 0xE0;
        return rocks[random() % rocks.size()];
    });
}

static float fractionOf(std::mt19937& random) {
    static const std::vector<float> fractions = {0,       0.5f,    0.25f,    0.99999f,
                                                 0.0001f, 0.0078f, 0.33333f, 0.984375f};
    const auto pick = random() % 12;
    return pick < fractions.size() ? fractions[pick]
                                   : static_cast<float>(random() % 100000) / 100000.0f;
}

TEST(TileRenderer, ShowsRandomLevelsAsWithEverythingDrawn) {
    Renderers renderers;
    std::mt19937 random(7);
    for (const int openness : {0, 4, 15, 50, 100}) {
        const LevelMap map = makeNastyLevel(34, 26, openness, static_cast<unsigned>(openness));
        for (int i = 0; i < 24; ++i) {
            // From well outside the grid on one side to well outside on the other.
            const WorldPoint camera = {static_cast<float>(random() % 64) - 14 + fractionOf(random),
                                       static_cast<float>(random() % 44) - 9 - fractionOf(random)};
            ASSERT_EQ(renderers.difference(map, camera), "") << openness << " of 100 open";
        }
    }
}

TEST(TileRenderer, ShowsEdgesAndSmallLevelsAsWithEverythingDrawn) {
    Renderers renderers;
    const auto rock = [](int, int) { return 0x40; };
    const auto hole = [](int x, int y) { return x == 2 && y == 2 ? 0xFF : 0x60; };
    const LevelMap empty{LoadedImage{}};
    const LevelMap one = makeLevel(1, 1, rock);
    const LevelMap three = makeLevel(3, 3, rock);
    const LevelMap five = makeLevel(5, 5, hole);
    const LevelMap wide = makeNastyLevel(9000, 14, 20, 3);
    for (const WorldPoint camera : {WorldPoint{0, 0}, WorldPoint{-0.5f, -0.5f}, WorldPoint{2, 2},
                                    WorldPoint{-7.99f, 6.01f}, WorldPoint{11.25f, 5.75f}}) {
        for (const LevelMap* map : {&empty, &one, &three, &five}) {
            ASSERT_EQ(renderers.difference(*map, camera), "");
        }
    }
    for (const float x : {8990.37f, 8999.99f, 9009.5f, 4096.001f}) {
        ASSERT_EQ(renderers.difference(wide, {x, 7.3f}), "");
    }
    // Far beyond the grid nothing is read and nothing shown.
    for (const WorldPoint far : {WorldPoint{-1e6f, 3}, WorldPoint{1e6f, 1e6f}}) {
        ASSERT_EQ(renderers.difference(five, far), "");
    }
}

TEST(TileRenderer, ShowsTheShippedLevelAsWithEverythingDrawn) {
    const LevelMap map = GoalRun::loadLevel();
    const std::vector<GoalRun::Frame> run = GoalRun::find(map);
    ASSERT_GT(run.size(), 100u);
    Renderers renderers;
    for (std::size_t i = 0; i < run.size(); i += 1 + run.size() / 100) {
        const WorldPoint place = {run[i].before.x, run[i].before.y};
        ASSERT_EQ(renderers.difference(map, cameraFor(place)), "") << "frame " << i;
    }
}

// --- single tiles

// The sheet's own pixels.
class Sheet {
public:
    struct Texel {
        Pixel colour;
        int alpha;
    };

    Texel at(int x, int y) const {
        const std::uint8_t* texel = image.pixels.get() + (y * 128 + x) * 4;
        return {{texel[0], texel[1], texel[2]}, texel[3]};
    }

private:
    LoadedImage image = ImageLoader().loadFromMemory(spriteImages[spriteTiles].data,
                                                     spriteImages[spriteTiles].bytes);
};

static constexpr Pixel behind = {255, 0, 255}; // a colour that the sheet has not

static Picture paintTiles(TileRenderer& tiles, const LevelMap& map, WorldPoint camera) {
    return window->paint([&](OpenGLDrawer& drawer) {
        drawer.fillRect(0, 0, 1280, 720, 255, 0, 255, 255);
        tiles.draw(drawer, map, camera);
    });
}

// How many pixels of the 64 by 64 tile at left, top are not those of a cell of the sheet.
static int wrongPixels(const Picture& picture, int left, int top, int cellColumn, int cellRow) {
    const Sheet sheet;
    int wrong = 0;
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            const auto [colour, alpha] = sheet.at(cellColumn * 16 + x / 4, cellRow * 16 + y / 4);
            const auto mix = [alpha = alpha](int over, int under) {
                return (over * alpha + under * (255 - alpha)) / 255;
            };
            const Pixel expected = {mix(colour.r, behind.r), mix(colour.g, behind.g),
                                    mix(colour.b, behind.b)};
            if (!picture.at(left + x, top + y).isNear(expected)) ++wrong;
        }
    }
    return wrong;
}

TEST(TileRenderer, ShowsEachCodeAsItsOwnCellOfTheSheet) {
    struct Look {
        int code, cellColumn, cellRow;
    };
    for (const Look& look :
         {Look{0x00, 1, 0}, Look{0x20, 0, 0}, Look{0x40, 2, 0}, Look{0x60, 4, 0}, Look{0x80, 5, 0},
          Look{0xFE, 3, 0}, Look{0xFF, 7, 7}, Look{0xE0, 0, 7}, Look{0x10, 0, 0}, Look{0x01, 0, 0},
          Look{0xFD, 0, 0}, Look{0xE1, 0, 0}, Look{0xA0, 0, 0}, Look{0xC0, 0, 0}}) {
        // A tile alone in open space, at column 5 and row 4.
        const LevelMap map =
            makeLevel(10, 10, [&](int x, int y) { return x == 5 && y == 4 ? look.code : 0xFF; });
        TileRenderer tiles;
        const Picture picture = paintTiles(tiles, map, {11, 6});
        EXPECT_EQ(wrongPixels(picture, 320, 256, look.cellColumn, look.cellRow), 0) << look.code;
        // The outline stands out by 4 units, and only around rock.
        const bool isRock = look.code != 0xFF && look.code != 0xE0;
        const Pixel around = isRock ? black : behind;
        EXPECT_EQ(picture.at(316, 252), around) << look.code;
        EXPECT_EQ(picture.at(387, 323), around) << look.code;
        EXPECT_EQ(picture.at(350, 255), around) << look.code;
        EXPECT_EQ(picture.at(315, 300), behind);
        EXPECT_EQ(picture.at(388, 300), behind);
        EXPECT_EQ(picture.at(350, 324), behind);
    }
}

TEST(TileRenderer, LeavesNoGapAndShowsNothingOfNeighbouringCells) {
    const Sheet sheet;
    std::set<Pixel> allowed;
    for (int i = 0; i < 256; ++i) allowed.insert(sheet.at(4 * 16 + i % 16, i / 16).colour);
    const LevelMap map = makeLevel(40, 30, [](int, int) { return 0x60; });
    TileRenderer tiles;
    std::mt19937 random(5);
    for (int i = 0; i < 40; ++i) {
        const WorldPoint camera = {13 + fractionOf(random), 9 + fractionOf(random)};
        const Picture picture = paintTiles(tiles, map, camera);
        int wrong = 0;
        for (int y = 0; y < 720; ++y) {
            for (int x = 0; x < 1280; ++x) wrong += allowed.count(picture.at(x, y)) == 0;
        }
        EXPECT_EQ(wrong, 0) << camera.x << ", " << camera.y;
    }
}

TEST(TileRenderer, ScrollsByTheFractionsOfTheCamera) {
    const LevelMap map =
        makeLevel(40, 30, [](int x, int y) { return x == 12 && y == 9 ? 0x00 : 0xFF; });
    struct Case {
        WorldPoint camera;
        int left, top; // of the tile
    };
    for (const Case& scroll :
         {Case{{11, 6}, 768, 576}, Case{{11.5f, 6.25f}, 736, 560}, Case{{23, 15}, 0, 0},
          Case{{-0.25f, 4}, 1488, 704}, Case{{4.25f, 15.5f}, 1200, -32}}) {
        TileRenderer tiles;
        const Picture picture = paintTiles(tiles, map, scroll.camera);
        const auto insideAt = [&](int x, int y) { return picture.at(x, y) != behind; };
        if (scroll.left >= 1280) {
            EXPECT_EQ(picture.count(behind), 1280 * 720);
            continue;
        }
        EXPECT_TRUE(insideAt(scroll.left + 32, scroll.top + 63));
        EXPECT_TRUE(insideAt(scroll.left + 67, scroll.top + 63));
        EXPECT_FALSE(insideAt(scroll.left + 68, scroll.top + 63));
        EXPECT_FALSE(insideAt(scroll.left + 32, scroll.top + 68));
    }
}

TEST(TileRenderer, ChangesTheFlameEverySixthDrawing) {
    const LevelMap map = makeLevel(10, 10, [](int x, int) { return x == 5 ? 0xE0 : 0xFF; });
    TileRenderer tiles;
    for (int drawing = 0; drawing < 40; ++drawing) {
        const Picture picture = paintTiles(tiles, map, {11, 6});
        const int frame = drawing / 6 % 3;
        EXPECT_EQ(wrongPixels(picture, 320, 256, frame, 7), 0) << "drawing " << drawing;
    }
}
