// SPDX-License-Identifier: Zlib
// What the drawer paints and what it leaves behind, in a real window.
#include <map>
#include <string>

#include "tests/GlWindow.h"

static GlWindow* const window = GlWindow::open();

static constexpr std::uint32_t deadHandle = 54321;

// A texture of one colour, of sides that are a power of two or not.
static std::uint32_t makeTexture(int width, int height,
                                 const std::function<Pixel(int, int)>& colourOf, int alpha = 255) {
    return window->drawer().createTexture(makePixels(width, height, colourOf, alpha),
                                          static_cast<std::uint32_t>(width),
                                          static_cast<std::uint32_t>(height));
}

// A texture of hard pixels, 8 by 8: red, with a green quarter at the top right, a blue one at the
// bottom left and a white one at the bottom right.
static std::uint32_t quarters() {
    static const std::uint32_t handle = [] {
        window->drawer().setTextureFiltering(false);
        const std::uint32_t made = makeTexture(8, 8, [](int x, int y) {
            if (y < 4) return x < 4 ? red : green;
            return x < 4 ? blue : white;
        });
        window->drawer().setTextureFiltering(true);
        return made;
    }();
    return handle;
}

// A small picture of a colour a place, different from all its neighbours.
static Pixel patchwork(int x, int y) {
    return {(x * 37 + 11) % 256, (y * 53 + 7) % 256, (x * 5 + y * 91) % 256};
}

// The bytes of a texture, RGBA.
static std::vector<std::uint8_t> readTexture(std::uint32_t name, int width, int height) {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(width * height) * 4);
    glBindTexture(GL_TEXTURE_2D, name);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return bytes;
}

static GLint textureParameter(std::uint32_t handle, GLenum parameter) {
    GLint value = 0;
    glBindTexture(GL_TEXTURE_2D, window->drawer().textureRecord(handle)->name);
    glGetTexParameteriv(GL_TEXTURE_2D, parameter, &value);
    glBindTexture(GL_TEXTURE_2D, 0);
    return value;
}

static std::array<GLint, 4> realViewport() {
    std::array<GLint, 4> viewport = {};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    return viewport;
}

// --- handles

// Comes first: it asks for the first texture that the program makes.
TEST(Handles, CountUpFromThoseOfTheDrawerItself) {
    OpenGLDrawer& drawer = window->drawer();
    const TextureRecord* offscreen = drawer.textureRecord(1);
    const TextureRecord* line = drawer.textureRecord(2);
    ASSERT_TRUE(offscreen && line);
    EXPECT_EQ(offscreen->width, 1280);
    EXPECT_EQ(offscreen->height, 720);
    EXPECT_EQ(offscreen->uExtent, 1);
    EXPECT_EQ(line->width, 8);
    EXPECT_EQ(line->height, 8);
    EXPECT_EQ(makeTexture(4, 4, patchwork), 3u);
    EXPECT_EQ(makeTexture(4, 4, patchwork), 4u);
}

TEST(Handles, OnlyTheNewestComesBackAfterDeletion) {
    OpenGLDrawer& drawer = window->drawer();
    const std::uint32_t first = makeTexture(2, 2, patchwork);
    const std::uint32_t second = makeTexture(2, 2, patchwork);
    ASSERT_EQ(second, first + 1);
    drawer.deleteTexture(second);
    EXPECT_EQ(drawer.textureRecord(second), nullptr);
    EXPECT_EQ(makeTexture(2, 2, patchwork), second);
    const GLuint name = drawer.textureRecord(first)->name;
    drawer.deleteTexture(first);
    EXPECT_FALSE(glIsTexture(name));
    EXPECT_EQ(makeTexture(2, 2, patchwork), second + 1);
    drawer.deleteTexture(first); // dead by now, like the next two
    drawer.deleteTexture(0);
    drawer.deleteTexture(deadHandle);
    EXPECT_EQ(makeTexture(2, 2, patchwork), second + 2);
}

TEST(Handles, NoPixelsOrImpossibleSizesGiveNone) {
    OpenGLDrawer& drawer = window->drawer();
    EXPECT_EQ(drawer.createTexture(nullptr, 4, 4), 0u);
    EXPECT_EQ(drawer.createTexture(makePixels(1, 1, patchwork), 0, 1), 0u);
    EXPECT_EQ(drawer.createTexture(makePixels(1, 1, patchwork), 1, 0), 0u);
    EXPECT_EQ(drawer.createTexture(makePixels(1, 1, patchwork), 65536, 1), 0u);
    EXPECT_EQ(drawer.createTexture(makePixels(1, 1, patchwork), 1, 65536), 0u);
}

// --- the picture in the window

TEST(Fitting, KeepsTheShapeOfTheScreenInEveryWindow) {
    struct Case {
        std::uint16_t windowWidth, windowHeight;
        std::array<GLint, 4> viewport; // left, bottom, width, height
    };
    for (const Case& fit :
         {Case{1280, 720, {0, 0, 1280, 720}}, Case{1920, 1080, {0, 0, 1920, 1080}},
          Case{1024, 768, {0, 96, 1024, 576}}, Case{2560, 1080, {320, 0, 1920, 1080}},
          Case{1366, 768, {0, 0, 1365, 768}}, Case{1001, 999, {0, 217, 1001, 563}},
          Case{1, 1, {0, 0, 1, 0}}}) {
        OpenGLDrawer& drawer = window->drawer();
        drawer.resizeWindow(fit.windowWidth, fit.windowHeight);
        EXPECT_EQ(realViewport(), fit.viewport) << fit.windowWidth << " by " << fit.windowHeight;
        const std::array<GLint, 4> told = {drawer.viewportX(), drawer.viewportY(),
                                           drawer.viewportWidth(), drawer.viewportHeight()};
        EXPECT_EQ(told, fit.viewport);
    }
    window->drawer().resizeWindow(GlWindow::width, GlWindow::height);
}

TEST(Fitting, LeavesTheBarsBlack) {
    const auto tooMuch = [](OpenGLDrawer& drawer) {
        drawer.fillRect(-2000, -2000, 6000, 6000, 255, 255, 255, 255);
    };
    window->drawer().resizeWindow(640, 720); // the lower left part of the real window
    EXPECT_EQ(window->paint(tooMuch).ink(), (Picture::Box{0, 180, 640, 540}));
    window->drawer().resizeWindow(1280, 360);
    EXPECT_EQ(window->paint(tooMuch).ink(), (Picture::Box{320, 360, 960, 720}));
    window->drawer().resizeWindow(GlWindow::width, GlWindow::height);
    EXPECT_EQ(window->paint(tooMuch).count(white), 1280 * 720);
    EXPECT_TRUE(window->paint([](OpenGLDrawer&) {}).isBlack()) << "a frame begins cleared";
}

TEST(Fitting, TranslationsAddUpUntilTheNextFrame) {
    const auto square = [](OpenGLDrawer& drawer) { drawer.fillRect(0, 0, 10, 10, 255, 0, 0, 255); };
    const Picture moved = window->paint([&](OpenGLDrawer& drawer) {
        drawer.translate(100, 50);
        drawer.translate(20, -10);
        square(drawer);
    });
    EXPECT_EQ(moved.ink(), (Picture::Box{120, 40, 130, 50}));
    EXPECT_EQ(window->paint(square).ink(), (Picture::Box{0, 0, 10, 10}));
}

// --- textures

TEST(Textures, OddSizesArePaddedAndShownWithoutThePadding) {
    OpenGLDrawer& drawer = window->drawer();
    const std::uint32_t handle = makeTexture(132, 68, patchwork, 254);
    const TextureRecord* record = drawer.textureRecord(handle);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->width, 132);
    EXPECT_EQ(record->height, 68);
    EXPECT_EQ(record->uExtent, 0.515625f);
    EXPECT_EQ(record->vExtent, 0.53125f);

    const std::vector<std::uint8_t> bytes = readTexture(record->name, 256, 128);
    const auto texel = [&](int x, int y) {
        const std::uint8_t* place = &bytes[static_cast<std::size_t>(y * 256 + x) * 4];
        return std::array<int, 4>{place[0], place[1], place[2], place[3]};
    };
    const std::array<int, 4> fill = {254, 254, 254, 254};
    EXPECT_EQ(texel(132, 0), fill);
    EXPECT_EQ(texel(255, 67), fill);
    EXPECT_EQ(texel(132, 127), fill);
    EXPECT_EQ(texel(17, 68), texel(17, 67));
    EXPECT_EQ(texel(131, 127), texel(131, 67));

    // Alpha would mix the last bit; without blending the pixels come through as they are.
    const Picture picture = window->paint([&](OpenGLDrawer& painter) {
        glDisable(GL_BLEND);
        painter.drawTexture(handle, 100, 200, 1, 1, 1, 1, 1, 1);
        glEnable(GL_BLEND);
    });
    int wrong = 0;
    for (int y = 0; y < 68; ++y) {
        for (int x = 0; x < 132; ++x) {
            if (!picture.at(100 + x, 200 + y).isNear(patchwork(x, y))) ++wrong;
        }
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(picture.ink(), (Picture::Box{100, 200, 232, 268}));
}

TEST(Textures, SidesOfOnePixelAndOfPowersOfTwoStay) {
    struct Case {
        int width, height;
        float uExtent, vExtent;
    };
    for (const Case& size : {Case{1, 1, 1, 1}, Case{1, 3, 1, 0.75f}, Case{64, 2, 1, 1},
                             Case{1024, 720, 1, 0.703125f}, Case{5, 8, 0.625f, 1}}) {
        const TextureRecord* record =
            window->drawer().textureRecord(makeTexture(size.width, size.height, patchwork));
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->uExtent, size.uExtent) << size.width << " by " << size.height;
        EXPECT_EQ(record->vExtent, size.vExtent) << size.width << " by " << size.height;
    }
}

TEST(Textures, TheFilterIsThatOfTheTimeOfMaking) {
    const auto halves = [](int x, int) { return x < 1 ? black : white; };
    const auto greys = [](std::uint32_t handle) {
        const Picture picture = window->paint([handle](OpenGLDrawer& drawer) {
            drawer.drawTexture(handle, 0, 0, 50, 50, 1, 1, 1, 1);
        });
        return 50 * 2 * 50 - picture.count(white) - (picture.count(black) - (1280 * 720 - 5000));
    };
    const std::uint32_t soft = makeTexture(2, 1, halves);
    window->drawer().setTextureFiltering(false);
    const std::uint32_t hard = makeTexture(2, 1, halves);
    EXPECT_EQ(textureParameter(hard, GL_TEXTURE_MIN_FILTER), GL_NEAREST);
    window->drawer().setTextureFiltering(true);
    EXPECT_EQ(textureParameter(soft, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(textureParameter(soft, GL_TEXTURE_WRAP_S), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(textureParameter(hard, GL_TEXTURE_WRAP_T), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(greys(hard), 0);
    EXPECT_GT(greys(soft), 1000);
}

// --- textured quads

TEST(Quads, AreScaledAndMirroredAboutTheirPlace) {
    struct Case {
        float x, y, scaleX, scaleY;
        Picture::Box box;
        Pixel topLeft, topRight, bottomLeft;
    };
    for (const Case& quad : {Case{100, 200, 10, 5, {100, 200, 180, 240}, red, green, blue},
                             Case{180, 200, -10, 5, {100, 200, 180, 240}, green, red, white},
                             Case{100, 240, 10, -5, {100, 200, 180, 240}, blue, white, red}}) {
        const Picture picture = window->paint([&](OpenGLDrawer& drawer) {
            drawer.drawTexture(quarters(), quad.x, quad.y, quad.scaleX, quad.scaleY, 1, 1, 1, 1);
        });
        EXPECT_EQ(picture.ink(), quad.box);
        EXPECT_EQ(picture.at(101, 201), quad.topLeft);
        EXPECT_EQ(picture.at(178, 201), quad.topRight);
        EXPECT_EQ(picture.at(101, 238), quad.bottomLeft);
    }
}

TEST(Quads, TurnClockwiseAboutAPivotInPixelsOfTheImage) {
    struct Case {
        float angle, pivotX, pivotY, scaleX, scaleY;
        Picture::Box box;
        Pixel topLeft, topRight; // of that box
    };
    for (const Case& turn : {Case{0, 4, 4, 10, 10, {400, 300, 480, 380}, red, green},
                             Case{90, 4, 4, 10, 10, {400, 300, 480, 380}, blue, red},
                             Case{-90, 4, 4, 10, 10, {400, 300, 480, 380}, green, white},
                             Case{90, 0, 0, 10, 10, {320, 300, 400, 380}, blue, red},
                             Case{180, 8, 8, 10, 10, {480, 380, 560, 460}, white, blue},
                             // The turn comes before the scale, so the box keeps its shape.
                             Case{90, 4, 4, 20, 10, {400, 300, 560, 380}, blue, red}}) {
        const Picture picture = window->paint([&](OpenGLDrawer& drawer) {
            drawer.drawTextureRotated(quarters(), 400, 300, turn.angle, turn.pivotX, turn.pivotY,
                                      turn.scaleX, turn.scaleY, 1, 1, 1, 1);
        });
        EXPECT_EQ(picture.ink(), turn.box) << turn.angle << " about " << turn.pivotX;
        EXPECT_EQ(picture.at(turn.box.left + 5, turn.box.top + 5), turn.topLeft) << turn.angle;
        EXPECT_EQ(picture.at(turn.box.right - 5, turn.box.top + 5), turn.topRight) << turn.angle;
    }
}

TEST(Quads, ShowARegionInFractionsOfTheImage) {
    // 12 by 6 pixels in a texture of 16 by 8: the fractions are the image's, not the texture's.
    window->drawer().setTextureFiltering(false);
    const std::uint32_t handle = makeTexture(12, 6, patchwork);
    window->drawer().setTextureFiltering(true);
    const Picture picture = window->paint([&](OpenGLDrawer& drawer) {
        drawer.drawTextureRegion(handle, 50, 60, 0.25f, 0.5f, 0.5f, 0.5f, 4, 10, 1, 1, 1, 1);
    });
    EXPECT_EQ(picture.ink(), (Picture::Box{50, 60, 50 + 6 * 4, 60 + 3 * 10}));
    EXPECT_TRUE(picture.at(51, 61).isNear(patchwork(3, 3)));
    EXPECT_TRUE(picture.at(50 + 23, 60 + 29).isNear(patchwork(8, 5)));
}

TEST(Quads, TakeColourAndAlpha) {
    const Picture picture = window->paint([](OpenGLDrawer& drawer) {
        drawer.drawTexture(quarters(), 0, 0, 10, 10, 0.5f, 1, 1, 1);
        drawer.drawTextureRotated(quarters(), 100, 0, 0, 4, 4, 10, 10, 1, 0.5f, 1, 0.5f);
        drawer.drawTextureRegion(quarters(), 200, 0, 0, 0, 1, 1, 10, 10, 1, 1, 0.5f, 1);
    });
    EXPECT_TRUE(picture.at(5, 5).isNear({128, 0, 0}));
    EXPECT_TRUE(picture.at(75, 75).isNear({128, 255, 255}));
    EXPECT_TRUE(picture.at(175, 5).isNear({0, 64, 0}));
    EXPECT_TRUE(picture.at(275, 75).isNear({255, 255, 128}));
}

TEST(Quads, MultiplyWithTheSecondTextureUntilTheFrameEnds) {
    const std::uint32_t base = makeTexture(8, 8, [](int, int) { return white; });
    const auto quads = [&](OpenGLDrawer& drawer) {
        drawer.drawTexture(base, 0, 0, 10, 10, 1, 1, 1, 1);
        drawer.drawTextureRegion(base, 100, 0, 0.5f, 0, 0.5f, 1, 20, 10, 1, 1, 1, 1);
        drawer.drawTextureRotated(base, 200, 0, 0, 4, 4, 10, 10, 1, 1, 1, 1);
    };
    const Picture both = window->paint([&](OpenGLDrawer& drawer) {
        drawer.setSecondTexture(quarters());
        quads(drawer);
    });
    EXPECT_EQ(both.at(5, 5), red);
    EXPECT_EQ(both.at(75, 5), green);
    EXPECT_EQ(both.at(5, 75), blue);
    EXPECT_EQ(both.at(105, 5), green) << "a region has the same place on both";
    EXPECT_EQ(both.at(205, 5), white) << "turned quads have one texture";
    EXPECT_EQ(window->paint(quads).at(5, 5), white) << "the frame's end forgets it";
    const Picture dead = window->paint([&](OpenGLDrawer& drawer) {
        drawer.setSecondTexture(deadHandle);
        quads(drawer);
    });
    EXPECT_EQ(dead.at(5, 5), white);
}

TEST(Quads, OfTheTileSheetAreExactTiles) {
    // A sheet whose cell (2, 1) is red in green surroundings.
    window->drawer().setTextureFiltering(false);
    const std::uint32_t sheet = makeTexture(
        128, 128, [](int x, int y) { return x / 16 == 2 && y / 16 == 1 ? red : green; });
    window->drawer().setTextureFiltering(true);
    const Picture picture = window->paint([&](OpenGLDrawer& drawer) {
        glBindTexture(GL_TEXTURE_2D, drawer.textureRecord(sheet)->name);
        drawer.drawTileQuad(100, 50, 0.251f, 0.126f, 0.123f, 0.123f, 4, 4, 1, 1, 1, 1);
        glBindTexture(GL_TEXTURE_2D, 0);
    });
    EXPECT_EQ(picture.ink(), (Picture::Box{100, 50, 164, 114}));
    EXPECT_EQ(picture.count(red), 64 * 64);
}

// --- polygons

TEST(Polygons, AreTexturedOverTheirBoundingBox) {
    const float diamond[] = {0, -50, 50, 0, 0, 50, -50, 0};
    const std::int32_t number = window->drawer().createPolygon(diamond, 4);
    EXPECT_EQ(window->drawer().createPolygon(diamond, 3), number + 1);
    const Picture picture = window->paint([&](OpenGLDrawer& drawer) {
        drawer.drawPolygon(number, quarters(), 300, 200, 2, 1, 1, 1, 1, 1);
    });
    const Picture::Box box = picture.ink();
    EXPECT_NEAR(box.left, 200, 2);
    EXPECT_NEAR(box.right, 400, 2);
    EXPECT_NEAR(box.top, 150, 2);
    EXPECT_NEAR(box.bottom, 250, 2);
    // All four sides are closed, and each shows its quarter.
    EXPECT_EQ(picture.at(260, 180), red);
    EXPECT_EQ(picture.at(340, 180), green);
    EXPECT_EQ(picture.at(260, 220), blue);
    EXPECT_EQ(picture.at(340, 220), white);
    EXPECT_EQ(picture.at(210, 160), black);
}

TEST(Polygons, WhoseXFallsAllAlongShowTheLeftEdgeOfTheTexture) {
    const float falling[] = {90, 0, 80, 90, 0, 40};
    const float rising[] = {0, 40, 80, 90, 90, 0};
    const std::int32_t first = window->drawer().createPolygon(falling, 3);
    const std::int32_t second = window->drawer().createPolygon(rising, 3);
    const auto paint = [](std::int32_t number) {
        return window->paint([number](OpenGLDrawer& drawer) {
            drawer.drawPolygon(number, quarters(), 300, 200, 1, 1, 1, 1, 1, 1);
        });
    };
    EXPECT_EQ(paint(first).at(380, 220), red);
    EXPECT_EQ(paint(second).at(380, 220), green);
}

TEST(Polygons, ShowTheSecondTextureFromItsBottomAtTheCentreToItsTopAtTheRim) {
    const std::uint32_t base = makeTexture(8, 8, [](int, int) { return white; });
    const float square[] = {0, 0, 100, 0, 100, 100, 0, 100};
    const std::int32_t number = window->drawer().createPolygon(square, 4);
    const Picture picture = window->paint([&](OpenGLDrawer& drawer) {
        drawer.setSecondTexture(quarters());
        drawer.drawPolygon(number, base, 300, 200, 1, 1, 1, 1, 1, 1);
    });
    EXPECT_EQ(picture.at(320, 203), red) << "the first half of a side";
    EXPECT_EQ(picture.at(380, 203), green) << "the second half";
    EXPECT_EQ(picture.at(303, 280), red) << "the last side goes back to the first point";
    EXPECT_TRUE(picture.at(348, 240) == blue || picture.at(348, 240) == white);
}

TEST(Polygons, ThatAreFlatOrMissingPaintNothing) {
    const float flat[] = {0, 5, 50, 5, 90, 5};
    const std::int32_t number = window->drawer().createPolygon(flat, 3);
    const std::int32_t none = window->drawer().createPolygon(flat, 0);
    const Picture picture = window->paint([&](OpenGLDrawer& drawer) {
        for (const std::int32_t polygon : {number, none, -1, none + 1, 1 << 30}) {
            drawer.drawPolygon(polygon, quarters(), 10, 10, 1, 1, 1, 1, 1, 1);
        }
        drawer.drawPolygon(0, deadHandle, 10, 10, 1, 1, 1, 1, 1, 1);
    });
    EXPECT_TRUE(picture.isBlack());
}

// --- plain shapes

TEST(Shapes, LinesAreSoftAcrossAndHardAtTheirEnds) {
    static constexpr std::array<int, 8> profile = {2, 33, 192, 255, 255, 192, 33, 2};
    const Picture picture = window->paint([](OpenGLDrawer& drawer) {
        drawer.drawLine(100, 100, 200, 100, 1, 1, 1, 1);
        drawer.drawLine(300, 220, 300, 120, 1, 0, 0, 1);
        drawer.drawLine(400, 400, 500, 500, 1, 1, 1, 1);
        drawer.drawLine(700, 300, 700, 300, 1, 1, 1, 1); // no length
    });
    for (int i = 0; i < 8; ++i) {
        const int level = profile[static_cast<std::size_t>(i)];
        EXPECT_TRUE(picture.at(150, 96 + i).isNear({level, level, level}, 3)) << i;
        EXPECT_TRUE(picture.at(296 + i, 150).isNear({level, 0, 0}, 3)) << i;
    }
    EXPECT_EQ(picture.at(100, 100), white);
    EXPECT_EQ(picture.at(199, 100), white);
    EXPECT_EQ(picture.at(99, 100), black);
    EXPECT_EQ(picture.at(200, 100), black);
    EXPECT_EQ(picture.at(300, 119), black);
    EXPECT_EQ(picture.at(300, 120), red);
    EXPECT_EQ(picture.at(450, 450), white);
    EXPECT_EQ(picture.at(456, 444), black) << "8.5 units off the line";
    EXPECT_LT(picture.ink().right, 510) << "nothing at 700, 300";
}

TEST(Shapes, RectanglesAndGradientsFillToTheirEdges) {
    const Picture picture = window->paint([](OpenGLDrawer& drawer) {
        drawer.fillRect(10, 20, 30, 40, 200, 100, 50, 255);
        drawer.fillGradient(100, 20, 50, 200, 0, 0, 255, 255, 200, 100, 0, 255);
        drawer.fillRect(300, 20, 0, 40, 255, 255, 255, 255); // no width
        drawer.fillRect(10, 300, 10, 10, 255, 0, 0, 128);
    });
    EXPECT_EQ(picture.count({200, 100, 50}), 30 * 40);
    EXPECT_EQ(picture.at(10, 20), (Pixel{200, 100, 50}));
    EXPECT_EQ(picture.at(39, 59), (Pixel{200, 100, 50}));
    EXPECT_TRUE(picture.at(100, 20).isNear({0, 0, 255}));
    EXPECT_TRUE(picture.at(149, 120).isNear({100, 50, 128}));
    EXPECT_TRUE(picture.at(100, 219).isNear({200, 100, 0}));
    EXPECT_TRUE(picture.at(100, 170).isNear(picture.at(149, 170)));
    EXPECT_TRUE(picture.at(15, 305).isNear({128, 0, 0}));
    EXPECT_EQ(picture.ink(), (Picture::Box{10, 20, 150, 310}));
}

TEST(Shapes, GradientsAreBlendedWhereOnlyOneEdgeIsOpaque) {
    const Picture picture = window->paint([](OpenGLDrawer& drawer) {
        drawer.fillRect(0, 0, 200, 200, 0, 200, 0, 255);
        drawer.fillGradient(0, 0, 50, 200, 200, 0, 0, 255, 200, 0, 0, 0);
        drawer.fillGradient(100, 0, 50, 200, 200, 0, 0, 0, 200, 0, 0, 255);
    });
    EXPECT_TRUE(picture.at(25, 199).isNear({0, 200, 0})) << "clear at the bottom";
    EXPECT_TRUE(picture.at(25, 0).isNear({200, 0, 0}));
    EXPECT_TRUE(picture.at(125, 0).isNear({0, 200, 0})) << "clear at the top";
    EXPECT_TRUE(picture.at(125, 199).isNear({200, 0, 0}));
}

TEST(Shapes, AreBlendedByTheModeLastSet) {
    const auto paint = [](const std::vector<int>& modes) {
        return window
            ->paint([&modes](OpenGLDrawer& drawer) {
                drawer.setBlendMode(0);
                drawer.fillRect(0, 0, 10, 10, 100, 100, 100, 255);
                for (const int mode : modes) drawer.setBlendMode(mode);
                drawer.fillRect(0, 0, 10, 10, 200, 0, 40, 128);
            })
            .at(5, 5);
    };
    EXPECT_TRUE(paint({}).isNear({150, 50, 70}));
    EXPECT_TRUE(paint({1}).isNear({200, 100, 120}));
    EXPECT_TRUE(paint({2}).isNear({28, 0, 0})); // 200 x 100 / 255 - 100 x 128 / 255
    EXPECT_TRUE(paint({1, 3, -1}).isNear({200, 100, 120})) << "no such modes";
    EXPECT_TRUE(paint({2, 1}).isNear({200, 100, 120})) << "adds again after subtracting";
    EXPECT_TRUE(paint({2, 0}).isNear({150, 50, 70}));

    window->drawer().setBlendMode(1);
    const Picture next = window->paint([](OpenGLDrawer& drawer) {
        drawer.fillRect(0, 0, 10, 10, 100, 0, 0, 255);
        drawer.fillRect(0, 0, 10, 10, 100, 0, 0, 255);
    });
    EXPECT_EQ(next.at(5, 5), (Pixel{200, 0, 0})) << "frames do not reset it";
    window->drawer().setBlendMode(0);
}

// --- what is left behind

static void expectFixedState(const std::string& after) {
    SCOPED_TRACE(after);
    const auto integer = [](GLenum what) {
        GLint value = -1;
        glGetIntegerv(what, &value);
        return value;
    };
    EXPECT_EQ(integer(GL_MATRIX_MODE), GL_MODELVIEW);
    EXPECT_EQ(integer(GL_MODELVIEW_STACK_DEPTH), 1);
    EXPECT_EQ(integer(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    EXPECT_EQ(integer(GL_TEXTURE_BINDING_2D), 0);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    glActiveTextureARB(GL_TEXTURE1_ARB);
    EXPECT_EQ(integer(GL_TEXTURE_BINDING_2D), 0);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    glActiveTextureARB(GL_TEXTURE0_ARB);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_FALSE(glIsEnabled(GL_CULL_FACE));
    EXPECT_EQ(integer(GL_FRAMEBUFFER_BINDING_EXT), 0);
    EXPECT_EQ(integer(GL_CURRENT_PROGRAM), 0);
    EXPECT_EQ(realViewport(), (std::array<GLint, 4>{0, 0, 1280, 720}));
    std::array<GLfloat, 16> projection = {};
    glGetFloatv(GL_PROJECTION_MATRIX, projection.data());
    EXPECT_FLOAT_EQ(projection[0], 2.0f / 1280);
    EXPECT_FLOAT_EQ(projection[5], -2.0f / 720);
}

TEST(State, IsTheSameAfterEveryOperation) {
    const float triangle[] = {0, 0, 10, 0, 0, 10};
    const std::int32_t polygon = window->drawer().createPolygon(triangle, 3);
    const std::uint32_t second = makeTexture(4, 4, patchwork);
    const std::int32_t font = window->drawer().createFont("MarsNeedsCunnilingus.ttf", 24);
    ASSERT_GT(font, 0);
    const std::map<std::string, std::function<void(OpenGLDrawer&)>> operations = {
        {"resizeWindow", [](auto& d) { d.resizeWindow(1280, 720); }},
        {"createTexture", [](auto& d) { d.createTexture(makePixels(3, 3, patchwork), 3, 3); }},
        {"deleteTexture", [](auto& d) { d.deleteTexture(makeTexture(2, 2, patchwork)); }},
        {"createPolygon", [&](auto& d) { d.createPolygon(triangle, 3); }},
        {"createFont", [](auto& d) { d.createFont("MarsNeedsCunnilingus.ttf", 12); }},
        {"missing font", [](auto& d) { d.createFont("missing.ttf", 12); }},
        {"setBlendMode", [](auto& d) { d.setBlendMode(0); }},
        {"drawTexture", [](auto& d) { d.drawTexture(quarters(), 1, 2, 3, 4, 1, 0, 1, 0.5f); }},
        {"drawTextureRotated",
         [](auto& d) { d.drawTextureRotated(quarters(), 1, 2, 3, 4, 4, 3, 4, 1, 0, 1, 1); }},
        {"drawTextureRegion",
         [](auto& d) { d.drawTextureRegion(quarters(), 1, 2, 0, 0, 1, 1, 3, 4, 1, 0, 1, 1); }},
        {"drawPolygon",
         [&](auto& d) { d.drawPolygon(polygon, quarters(), 1, 2, 3, 4, 1, 0, 1, 1); }},
        {"glyph text", [](auto& d) { d.drawText("GO!", 0, 1, 2, 100, 1, 1, 0, 1, 1); }},
        {"font text", [&](auto& d) { d.drawText("GO!", font, 1, 2, 10, 1, 1, 0, 1, 1); }},
        {"drawLine", [](auto& d) { d.drawLine(1, 2, 3, 4, 1, 0, 1, 1); }},
        {"fillRect", [](auto& d) { d.fillRect(1, 2, 3, 4, 1, 0, 1, 1); }},
        {"fillGradient", [](auto& d) { d.fillGradient(1, 2, 3, 4, 1, 0, 1, 1, 2, 3, 4, 5); }},
        {"translate", [](auto& d) { d.translate(5, 6); }},
        {"setViewport and back",
         [](auto& d) {
             d.setViewport(10, 20, 300, 200);
             d.resetViewport();
         }},
        {"readScreen", [](auto& d) { d.readScreen(); }},
        {"setGlyphImage", [](auto& d) { d.setGlyphImage(3, makePixels(8, 8, patchwork), 8); }},
        {"unknown ones", [](auto& d) { d.drawTexture(deadHandle, 1, 2, 3, 4, 1, 1, 1, 1); }},
    };
    window->paint([&](OpenGLDrawer& drawer) {
        expectFixedState("beginFrame");
        for (const auto& [name, operation] : operations) {
            operation(drawer);
            expectFixedState(name);
            drawer.setSecondTexture(second);
            operation(drawer);
            expectFixedState(name + " with a second texture");
            drawer.setSecondTexture(0);
        }
    });
    expectFixedState("endFrame");
}

TEST(State, DeadHandlesAndUnknownFontsPaintNothing) {
    const Picture picture = window->paint([](OpenGLDrawer& drawer) {
        for (const std::uint32_t handle : {0u, deadHandle}) {
            drawer.drawTexture(handle, 10, 10, 20, 20, 1, 1, 1, 1);
            drawer.drawTextureRotated(handle, 10, 10, 30, 4, 4, 20, 20, 1, 1, 1, 1);
            drawer.drawTextureRegion(handle, 10, 10, 0, 0, 1, 1, 20, 20, 1, 1, 1, 1);
            EXPECT_EQ(drawer.textureRecord(handle), nullptr);
        }
        for (const std::int32_t font : {-1, 1000, 0x7FFFFFFF}) {
            drawer.drawText("Speed:", font, 10, 10, 500, 1, 1, 1, 1, 1);
        }
    });
    EXPECT_TRUE(picture.isBlack());
}

// --- the glyph font

static const std::string glyphCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.,+-!?:_";

// A colour of its own for each glyph.
static Pixel glyphColour(int index) {
    return {55 + index * 4, 250 - index * 5, (index * 77) % 256};
}

static void setGlyphColours() {
    for (int i = 0; i < 43; ++i) {
        const auto colourOf = [i](int, int) { return glyphColour(i); };
        window->drawer().setGlyphImage(i, makePixels(16, 16, colourOf), 16);
    }
}

TEST(GlyphText, ShowsTheImageOfEachCharacterAndSkipsAStepForOthers) {
    window->drawer().resizeWindow(GlWindow::width, GlWindow::height); // all glyphs blank again
    setGlyphColours();
    window->drawer().setGlyphImage(0, nullptr, 16); // changes nothing, like the next three
    window->drawer().setGlyphImage(-1, makePixels(1, 1, patchwork), 1);
    window->drawer().setGlyphImage(44, makePixels(1, 1, patchwork), 1);
    window->drawer().setGlyphImage(0, makePixels(1, 1, patchwork), 0);
    const Picture picture = window->paint([](OpenGLDrawer& drawer) {
        drawer.drawGlyphText(glyphCharacters, 100, 50, 20, 1, 1, 1, 1);
        drawer.drawGlyphText("abc xyz*\xC4\nz", 100, 100, 20, 1, 1, 1, 1);
        drawer.drawGlyphText("", 100, 150, 20, 1, 1, 1, 1);
        drawer.drawGlyphText("__", 100, 200, 20, 1, 0.5f, 0, 0.5f);
    });
    for (int i = 0; i < 44; ++i) {
        const Pixel expected = i == 43 ? white : glyphColour(i);
        for (const int x : {1, 18}) {
            EXPECT_TRUE(picture.at(100 + i * 20 + x, 51).isNear(expected)) << glyphCharacters[i];
        }
    }
    const std::array<int, 11> second = {0, 1, 2, -1, 23, 24, 25, -1, -1, -1, 25};
    for (int i = 0; i < 11; ++i) {
        const int index = second[static_cast<std::size_t>(i)];
        const Pixel expected = index < 0 ? black : glyphColour(index);
        EXPECT_TRUE(picture.at(110 + i * 20, 110).isNear(expected)) << i;
    }
    EXPECT_TRUE(picture.at(130, 210).isNear({128, 64, 0}));
    EXPECT_EQ(picture.ink(), (Picture::Box{100, 50, 100 + 44 * 20, 220}));
}

TEST(GlyphText, IsTheFontOfNumberNoughtAt32UnitsAndDoesNotWrap) {
    const Picture text = window->paint(
        [](OpenGLDrawer& drawer) { drawer.drawText("GO_ ON", 0, 30, 40, 10, 1.5f, 1, 1, 0, 1); });
    const Picture glyphs = window->paint(
        [](OpenGLDrawer& drawer) { drawer.drawGlyphText("GO_ ON", 30, 40, 48, 1, 1, 0, 1); });
    EXPECT_EQ(text.differenceTo(glyphs), "");
    EXPECT_EQ(text.ink(), (Picture::Box{30, 40, 30 + 6 * 48, 88}));
}

TEST(GlyphText, IsBlankAgainAfterAResize) {
    window->drawer().resizeWindow(GlWindow::width, GlWindow::height);
    const Picture picture = window->paint(
        [](OpenGLDrawer& drawer) { drawer.drawGlyphText(glyphCharacters, 0, 0, 20, 1, 1, 1, 1); });
    EXPECT_EQ(picture.count(white), 44 * 20 * 20);
}

// Comes last: the padding stays with the drawer for good.
TEST(GlyphText, OverlapsByThePaddingOfImagesOfOddSizes) {
    setGlyphColours();
    const auto greenOne = [](int, int) { return green; };
    window->drawer().setGlyphImage(1, makePixels(12, 12, greenOne), 12);
    const Picture sixteen = window->paint(
        [](OpenGLDrawer& drawer) { drawer.drawGlyphText("BB", 100, 50, 16, 1, 1, 1, 1); });
    EXPECT_EQ(sixteen.at(105, 55), green);
    EXPECT_EQ(sixteen.at(113, 55), green) << "the second glyph, 12 units on";
    EXPECT_EQ(sixteen.at(126, 55), white) << "the padding repeats the alpha of the row's end";
    EXPECT_EQ(sixteen.ink(), (Picture::Box{100, 50, 128, 62})) << "below the image it is clear";
    const Picture ten = window->paint(
        [](OpenGLDrawer& drawer) { drawer.drawGlyphText("AAC", 100, 50, 10, 1, 1, 1, 1); });
    EXPECT_EQ(ten.ink().right, 100 + 2 * 8 + 10) << "2.5 is cut to 2";
    EXPECT_TRUE(ten.at(117, 55).isNear(glyphColour(2)));
}
