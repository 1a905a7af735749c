// SPDX-License-Identifier: Zlib
// What the drawer paints and what it leaves behind, in a real window.
#include <map>
#include <string>

#include "tests/support/GlWindow.h"

static GlWindow* const window = GlWindow::open();

static constexpr std::uint32_t deadHandle = 54321;

static Picture paint(const std::function<void(OpenGLDrawer&)>& scene) {
    return window->paint(scene);
}

// A small picture of a colour a place, different from all its neighbours.
static Pixel patchwork(int x, int y) {
    return {(x * 37 + 11) % 256, (y * 53 + 7) % 256, (x * 5 + y * 91) % 256};
}

static std::uint32_t plain(const Pixel& colour) {
    return window->makeTexture(8, 8, [&colour](int, int) { return colour; });
}

// --- textures

// Comes first: it asks for the first texture that the program makes.
TEST(Textures, HaveHandlesThatCountUpAndOfDeletedOnesTheNewestComesBack) {
    OpenGLDrawer& drawer = window->drawer();
    const auto make = [] { return window->makeTexture(2, 2, patchwork); };
    ASSERT_TRUE(drawer.textureRecord(1) && drawer.textureRecord(2));
    EXPECT_EQ(drawer.textureRecord(1)->width, 1280) << "the picture off screen";
    EXPECT_EQ(drawer.textureRecord(2)->width, 8) << "the line";
    EXPECT_EQ(make(), 3u);
    EXPECT_EQ(make(), 4u);
    drawer.deleteTexture(4);
    EXPECT_EQ(drawer.textureRecord(4), nullptr);
    EXPECT_EQ(make(), 4u);
    const GLuint name = drawer.textureRecord(3)->name;
    drawer.deleteTexture(3);
    EXPECT_FALSE(glIsTexture(name));
    EXPECT_EQ(make(), 5u);
    for (const std::uint32_t dead : {3u, 0u, deadHandle}) drawer.deleteTexture(dead);
    EXPECT_EQ(make(), 6u);

    EXPECT_EQ(drawer.createTexture(nullptr, 4, 4), 0u);
    for (const auto& [width, height] :
         {std::pair(0u, 1u), std::pair(1u, 0u), std::pair(65536u, 1u), std::pair(1u, 65536u)}) {
        EXPECT_EQ(drawer.createTexture(makePixels(1, 1, patchwork), width, height), 0u);
    }
}

TEST(Textures, OfOddSizesArePaddedAndShownWithoutThePadding) {
    const std::tuple<int, int, float, float> sizes[] = {
        {1, 1, 1, 1}, {1, 3, 1, 0.75f}, {64, 2, 1, 1}, {5, 8, 0.625f, 1}};
    for (const auto& [width, height, uExtent, vExtent] : sizes) {
        const TextureRecord& record =
            *window->drawer().textureRecord(window->makeTexture(width, height, patchwork));
        EXPECT_EQ(record.uExtent, uExtent) << width << " by " << height;
        EXPECT_EQ(record.vExtent, vExtent) << width << " by " << height;
    }

    const std::uint32_t handle = window->makeTexture(132, 68, patchwork, 254);
    std::vector<std::array<std::uint8_t, 4>> texels(256 * 128);
    glBindTexture(GL_TEXTURE_2D, window->drawer().textureRecord(handle)->name);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    const std::array<std::uint8_t, 4> fill = {254, 254, 254, 254}; // the alpha of a row's end
    EXPECT_EQ(texels[132], fill);
    EXPECT_EQ(texels[127 * 256 + 255], fill);
    EXPECT_EQ(texels[127 * 256 + 17], texels[67 * 256 + 17]);

    // Alpha would mix the last bit; without blending the pixels come through as they are.
    const Picture picture = paint([&](auto& drawer) {
        glDisable(GL_BLEND);
        drawer.drawTexture(handle, 100, 200, 1, 1, 1, 1, 1, 1);
        glEnable(GL_BLEND);
    });
    int wrong = 0;
    for (int y = 0; y < 68; ++y) {
        for (int x = 0; x < 132; ++x) {
            wrong += !picture.at(100 + x, 200 + y).isNear(patchwork(x, y));
        }
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(picture.ink(), (Picture::Box{100, 200, 232, 268}));
}

TEST(Textures, AreFilteredAsTheDrawerWasSetAtTheirMaking) {
    for (const bool smooth : {true, false}) {
        const std::uint32_t handle = window->makeTexture(2, 1, patchwork, 255, smooth);
        glBindTexture(GL_TEXTURE_2D, window->drawer().textureRecord(handle)->name);
        for (const auto& [parameter, expected] :
             {std::pair(GL_TEXTURE_MIN_FILTER, smooth ? GL_LINEAR : GL_NEAREST),
              std::pair(GL_TEXTURE_MAG_FILTER, smooth ? GL_LINEAR : GL_NEAREST),
              std::pair(GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE),
              std::pair(GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE)}) {
            GLint value = 0;
            glGetTexParameteriv(GL_TEXTURE_2D, static_cast<GLenum>(parameter), &value);
            EXPECT_EQ(value, expected) << parameter;
        }
        glBindTexture(GL_TEXTURE_2D, 0);
    }
}

// --- the picture in the window

TEST(Fitting, KeepsTheShapeOfTheScreenInEveryWindow) {
    using Sides = std::array<GLint, 4>; // left, bottom, width, height
    const std::tuple<std::uint16_t, std::uint16_t, Sides> cases[] = {
        {1920, 1080, {0, 0, 1920, 1080}},   {1024, 768, {0, 96, 1024, 576}},
        {2560, 1080, {320, 0, 1920, 1080}}, {1366, 768, {0, 0, 1365, 768}},
        {1001, 999, {0, 217, 1001, 563}},   {1, 1, {0, 0, 1, 0}}};
    OpenGLDrawer& drawer = window->drawer();
    for (const auto& [width, height, viewport] : cases) {
        drawer.resizeWindow(width, height);
        EXPECT_EQ(realViewport(), viewport) << width << " by " << height;
        const Sides told = {drawer.viewportX(), drawer.viewportY(), drawer.viewportWidth(),
                            drawer.viewportHeight()};
        EXPECT_EQ(told, viewport);
    }
    drawer.resizeWindow(GlWindow::width, GlWindow::height);
}

TEST(Fitting, LeavesTheBarsBlack) {
    const auto tooMuch = [](auto& drawer) {
        drawer.fillRect(-2000, -2000, 6000, 6000, 255, 255, 255, 255);
    };
    window->drawer().resizeWindow(640, 720); // the lower left part of the real window
    EXPECT_EQ(paint(tooMuch).ink(), (Picture::Box{0, 180, 640, 540}));
    window->drawer().resizeWindow(1280, 360);
    EXPECT_EQ(paint(tooMuch).ink(), (Picture::Box{320, 360, 960, 720}));
    window->drawer().resizeWindow(GlWindow::width, GlWindow::height);
    EXPECT_EQ(paint(tooMuch).count(white), 1280 * 720);
    EXPECT_TRUE(paint([](auto&) {}).isBlack()) << "a frame begins cleared";
}

TEST(Fitting, TranslationsAddUpUntilTheNextFrame) {
    const auto square = [](auto& drawer) { drawer.fillRect(0, 0, 10, 10, 255, 0, 0, 255); };
    const Picture moved = paint([&](auto& drawer) {
        drawer.translate(100, 50);
        drawer.translate(20, -10);
        square(drawer);
    });
    EXPECT_EQ(moved.ink(), (Picture::Box{120, 40, 130, 50}));
    EXPECT_EQ(paint(square).ink(), (Picture::Box{0, 0, 10, 10}));
}

// --- textured quads

TEST(Quads, AreScaledAndMirroredAboutTheirPlace) {
    struct Case {
        float x, y, scaleX, scaleY;
        Pixel topLeft, topRight, bottomLeft;
    };
    for (const Case& quad :
         {Case{100, 200, 10, 5, red, green, blue}, Case{180, 200, -10, 5, green, red, white},
          Case{100, 240, 10, -5, blue, white, red}}) {
        const Picture picture = paint([&](auto& drawer) {
            drawer.drawTexture(window->quarters(), quad.x, quad.y, quad.scaleX, quad.scaleY, 1, 1,
                               1, 1);
        });
        EXPECT_EQ(picture.ink(), (Picture::Box{100, 200, 180, 240}));
        EXPECT_EQ(picture.at(101, 201), quad.topLeft);
        EXPECT_EQ(picture.at(178, 201), quad.topRight);
        EXPECT_EQ(picture.at(101, 238), quad.bottomLeft);
    }
}

TEST(Quads, TurnClockwiseAboutAPivotInPixelsOfTheImage) {
    struct Case {
        float angle, pivotX, pivotY, scaleX;
        Picture::Box box;
        Pixel topLeft, topRight; // of that box
    };
    for (const Case& turn : {Case{0, 4, 4, 10, {400, 300, 480, 380}, red, green},
                             Case{90, 4, 4, 10, {400, 300, 480, 380}, blue, red},
                             Case{-90, 4, 4, 10, {400, 300, 480, 380}, green, white},
                             Case{90, 0, 0, 10, {320, 300, 400, 380}, blue, red},
                             Case{180, 8, 8, 10, {480, 380, 560, 460}, white, blue},
                             // The turn comes before the scale, so the box keeps its shape.
                             Case{90, 4, 4, 20, {400, 300, 560, 380}, blue, red}}) {
        const Picture picture = paint([&](auto& drawer) {
            drawer.drawTextureRotated(window->quarters(), 400, 300, turn.angle, turn.pivotX,
                                      turn.pivotY, turn.scaleX, 10, 1, 1, 1, 1);
        });
        EXPECT_EQ(picture.ink(), turn.box) << turn.angle << " about " << turn.pivotX;
        EXPECT_EQ(picture.at(turn.box.left + 5, turn.box.top + 5), turn.topLeft) << turn.angle;
        EXPECT_EQ(picture.at(turn.box.right - 5, turn.box.top + 5), turn.topRight) << turn.angle;
    }
}

TEST(Quads, ShowTheImageAndRegionsInFractionsOfItWithoutThePadding) {
    // 12 by 6 pixels in a texture of 16 by 8: the fractions are the image's, not the texture's.
    const std::uint32_t handle = window->makeTexture(12, 6, patchwork, 255, false);
    const Picture picture = paint([&](auto& drawer) {
        drawer.drawTextureRegion(handle, 50, 60, 0.25f, 0.5f, 0.5f, 0.5f, 4, 10, 1, 1, 1, 1);
    });
    EXPECT_EQ(picture.ink(), (Picture::Box{50, 60, 50 + 6 * 4, 60 + 3 * 10}));
    EXPECT_TRUE(picture.at(51, 61).isNear(patchwork(3, 3)));
    EXPECT_TRUE(picture.at(50 + 23, 60 + 29).isNear(patchwork(8, 5)));
    const Picture turned = paint([&](auto& drawer) {
        drawer.drawTextureRotated(handle, 50, 60, 0, 6, 3, 4, 10, 1, 1, 1, 1);
    });
    EXPECT_TRUE(turned.at(51, 61).isNear(patchwork(0, 0)));
    EXPECT_TRUE(turned.at(50 + 47, 60 + 59).isNear(patchwork(11, 5))) << "so is the whole one";
}

TEST(Quads, TakeColourAndAlpha) {
    const std::uint32_t handle = window->quarters();
    const Picture picture = paint([&](auto& drawer) {
        drawer.drawTexture(handle, 0, 0, 10, 10, 0.5f, 1, 1, 1);
        drawer.drawTextureRotated(handle, 100, 0, 0, 4, 4, 10, 10, 1, 0.5f, 1, 0.5f);
        drawer.drawTextureRegion(handle, 200, 0, 0, 0, 1, 1, 10, 10, 1, 1, 0.5f, 1);
    });
    EXPECT_TRUE(picture.at(5, 5).isNear({128, 0, 0}));
    EXPECT_TRUE(picture.at(75, 75).isNear({128, 255, 255}));
    EXPECT_TRUE(picture.at(175, 5).isNear({0, 64, 0}));
    EXPECT_TRUE(picture.at(275, 75).isNear({255, 255, 128}));
}

TEST(Quads, MultiplyWithTheSecondTextureUntilTheFrameEnds) {
    const std::uint32_t base = plain(white);
    const auto paintWith = [&](std::uint32_t second) {
        return paint([&](auto& drawer) {
            if (second != 0) drawer.setSecondTexture(second);
            drawer.drawTexture(base, 0, 0, 10, 10, 1, 1, 1, 1);
            drawer.drawTextureRegion(base, 100, 0, 0.5f, 0, 0.5f, 1, 20, 10, 1, 1, 1, 1);
            drawer.drawTextureRotated(base, 200, 0, 0, 4, 4, 10, 10, 1, 1, 1, 1);
        });
    };
    const Picture both = paintWith(window->quarters());
    EXPECT_EQ(both.at(5, 5), red);
    EXPECT_EQ(both.at(75, 5), green);
    EXPECT_EQ(both.at(5, 75), blue);
    EXPECT_EQ(both.at(105, 5), green) << "a region has the same place on both";
    EXPECT_EQ(both.at(205, 5), white) << "turned quads have one texture";
    EXPECT_EQ(paintWith(0).at(5, 5), white) << "the frame's end forgets it";
    EXPECT_EQ(paintWith(deadHandle).at(5, 5), white);
}

TEST(Quads, OfTheTileSheetAreExactTiles) {
    // A sheet whose cell (2, 1) is red in green surroundings.
    const auto colourOf = [](int x, int y) { return x / 16 == 2 && y / 16 == 1 ? red : green; };
    const std::uint32_t sheet = window->makeTexture(128, 128, colourOf, 255, false);
    const Picture picture = paint([&](auto& drawer) {
        glBindTexture(GL_TEXTURE_2D, drawer.textureRecord(sheet)->name);
        drawer.drawTileQuad(100, 50, 0.251f, 0.126f, 0.123f, 0.123f, 4, 4, 1, 1, 1, 1);
        glBindTexture(GL_TEXTURE_2D, 0);
    });
    EXPECT_EQ(picture.ink(), (Picture::Box{100, 50, 164, 114}));
    EXPECT_EQ(picture.count(red), 64 * 64);
}

// --- polygons

static std::int32_t polygonOf(const std::vector<float>& points) {
    return window->drawer().createPolygon(points.data(),
                                          static_cast<std::int32_t>(points.size() / 2));
}

static Picture paintPolygon(std::int32_t polygon, std::uint32_t handle, float scaleX = 1) {
    return paint([&](auto& drawer) {
        drawer.drawPolygon(polygon, handle, 300, 200, scaleX, 1, 1, 1, 1, 1);
    });
}

TEST(Polygons, AreTexturedOverTheirBoundingBox) {
    const std::int32_t diamond = polygonOf({0, -50, 50, 0, 0, 50, -50, 0});
    const std::int32_t rising = polygonOf({0, 40, 80, 90, 90, 0});
    const std::int32_t falling = polygonOf({90, 0, 80, 90, 0, 40});
    EXPECT_EQ(rising, diamond + 1);
    const Picture picture = paintPolygon(diamond, window->quarters(), 2);
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

    EXPECT_EQ(paintPolygon(rising, window->quarters()).at(380, 220), green);
    EXPECT_EQ(paintPolygon(falling, window->quarters()).at(380, 220), red)
        << "where x falls all along, the left edge of the texture is all that shows";
}

TEST(Polygons, ShowTheSecondTextureFromItsBottomAtTheCentreToItsTopAtTheRim) {
    const std::int32_t square = polygonOf({0, 0, 100, 0, 100, 100, 0, 100});
    window->drawer().setSecondTexture(window->quarters());
    const Picture picture = paintPolygon(square, plain(white));
    EXPECT_EQ(picture.at(320, 203), red) << "the first half of a side";
    EXPECT_EQ(picture.at(380, 203), green) << "the second half";
    EXPECT_EQ(picture.at(303, 280), red) << "the last side goes back to the first point";
    EXPECT_TRUE(picture.at(348, 240) == blue || picture.at(348, 240) == white);
}

// --- plain shapes

TEST(Shapes, LinesAreSoftAcrossAndHardAtTheirEnds) {
    static constexpr std::array<int, 8> profile = {2, 33, 192, 255, 255, 192, 33, 2};
    const Picture picture = paint([](auto& drawer) {
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
    for (const int x : {100, 199}) EXPECT_EQ(picture.at(x, 100), white);
    for (const int x : {99, 200}) EXPECT_EQ(picture.at(x, 100), black);
    EXPECT_EQ(picture.at(300, 119), black);
    EXPECT_EQ(picture.at(300, 120), red);
    EXPECT_EQ(picture.at(450, 450), white);
    EXPECT_EQ(picture.at(456, 444), black) << "8.5 units off the line";
    EXPECT_LT(picture.ink().right, 510) << "nothing at 700, 300";
}

TEST(Shapes, RectanglesAndGradientsFillToTheirEdges) {
    const Picture picture = paint([](auto& drawer) {
        drawer.fillRect(10, 20, 30, 40, 200, 100, 50, 255);
        drawer.fillGradient(100, 20, 50, 200, 0, 0, 255, 255, 200, 100, 0, 255);
        drawer.fillRect(300, 20, 0, 40, 255, 255, 255, 255); // no width
        drawer.fillRect(10, 300, 10, 10, 255, 0, 0, 128);
        drawer.fillRect(0, 400, 100, 200, 0, 200, 0, 255);
        drawer.fillGradient(0, 400, 50, 200, 200, 0, 0, 255, 200, 0, 0, 0);
        drawer.fillGradient(50, 400, 50, 200, 200, 0, 0, 0, 200, 0, 0, 255);
    });
    EXPECT_EQ(picture.count({200, 100, 50}), 30 * 40);
    EXPECT_TRUE(picture.at(100, 20).isNear({0, 0, 255}));
    EXPECT_TRUE(picture.at(149, 120).isNear({100, 50, 128}));
    EXPECT_TRUE(picture.at(100, 219).isNear({200, 100, 0}));
    EXPECT_TRUE(picture.at(100, 170).isNear(picture.at(149, 170)));
    EXPECT_TRUE(picture.at(15, 305).isNear({128, 0, 0}));
    EXPECT_TRUE(picture.at(25, 400).isNear({200, 0, 0}));
    EXPECT_TRUE(picture.at(25, 599).isNear({0, 200, 0})) << "clear at the bottom";
    EXPECT_TRUE(picture.at(75, 400).isNear({0, 200, 0})) << "clear at the top";
    EXPECT_EQ(picture.ink(), (Picture::Box{0, 20, 150, 600}));
}

TEST(Shapes, AreBlendedByTheModeLastSet) {
    const Pixel mixed = {150, 50, 70};
    const Pixel added = {200, 100, 120};
    const std::pair<std::vector<int>, Pixel> cases[] = {
        {{}, mixed},     {{1}, added},    {{2}, {28, 0, 0}},    // 200 x 100 / 255 - 100 x 128 / 255
        {{2, 1}, added}, {{2, 0}, mixed}, {{1, 3, -1}, added}}; // there are no such two
    for (const auto& [modes, expected] : cases) {
        const Picture picture = paint([&modes = modes](auto& drawer) {
            drawer.fillRect(0, 0, 10, 10, 100, 100, 100, 255);
            for (const int mode : modes) drawer.setBlendMode(mode);
            drawer.fillRect(0, 0, 10, 10, 200, 0, 40, 128);
            drawer.setBlendMode(0);
        });
        EXPECT_TRUE(picture.at(5, 5).isNear(expected)) << picture.at(5, 5);
    }
    window->drawer().setBlendMode(1);
    const Picture next = paint([](auto& drawer) {
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
    for (const GLenum never : {GL_DEPTH_TEST, GL_CULL_FACE, GL_SCISSOR_TEST}) {
        EXPECT_FALSE(glIsEnabled(never)) << never;
    }
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
    const std::uint32_t quarters = window->quarters();
    const std::int32_t polygon = window->drawer().createPolygon(triangle, 3);
    const std::int32_t font = window->drawer().createFont("MarsNeedsCunnilingus.ttf", 24);
    ASSERT_GT(font, 0);
    const std::map<std::string, std::function<void(OpenGLDrawer&)>> operations = {
        {"resizeWindow", [](auto& d) { d.resizeWindow(1280, 720); }},
        {"createTexture", [](auto& d) { d.createTexture(makePixels(3, 3, patchwork), 3, 3); }},
        {"deleteTexture", [](auto& d) { d.deleteTexture(plain(red)); }},
        {"createPolygon", [&](auto& d) { d.createPolygon(triangle, 3); }},
        {"createFont", [](auto& d) { d.createFont("MarsNeedsCunnilingus.ttf", 12); }},
        {"missing font", [](auto& d) { d.createFont("missing.ttf", 12); }},
        {"setBlendMode", [](auto& d) { d.setBlendMode(0); }},
        {"drawTexture", [&](auto& d) { d.drawTexture(quarters, 1, 2, 3, 4, 1, 0, 1, 0.5f); }},
        {"drawTextureRotated",
         [&](auto& d) { d.drawTextureRotated(quarters, 1, 2, 3, 4, 4, 3, 4, 1, 0, 1, 1); }},
        {"drawTextureRegion",
         [&](auto& d) { d.drawTextureRegion(quarters, 1, 2, 0, 0, 1, 1, 3, 4, 1, 0, 1, 1); }},
        {"drawPolygon", [&](auto& d) { d.drawPolygon(polygon, quarters, 1, 2, 3, 4, 1, 0, 1, 1); }},
        {"glyph text", [](auto& d) { d.drawText("GO!", 0, 1, 2, 100, 1, 1, 0, 1, 1); }},
        {"font text", [&](auto& d) { d.drawText("GO!", font, 1, 2, 10, 1, 1, 0, 1, 1); }},
        {"drawLine", [](auto& d) { d.drawLine(1, 2, 3, 4, 1, 0, 1, 1); }},
        {"fillRect", [](auto& d) { d.fillRect(1, 2, 3, 4, 1, 0, 1, 255); }},
        {"fillGradient", [](auto& d) { d.fillGradient(1, 2, 3, 4, 1, 0, 1, 1, 2, 3, 4, 5); }},
        {"translate", [](auto& d) { d.translate(5, 6); }},
        {"setViewport and back", [](auto& d) { d.setViewport(9, 9, 9, 9), d.resetViewport(); }},
        {"clip and back", [](auto& d) { d.clip(9, 9, 9, 9), d.stopClipping(); }},
        {"readScreen", [](auto& d) { d.readScreen(); }},
        {"setGlyphImage", [](auto& d) { d.setGlyphImage(3, makePixels(8, 8, patchwork), 8); }},
        {"unknown ones", [](auto& d) { d.drawTexture(deadHandle, 1, 2, 3, 4, 1, 1, 1, 1); }},
    };
    paint([&](auto& drawer) {
        expectFixedState("beginFrame");
        for (const auto& [name, operation] : operations) {
            operation(drawer);
            expectFixedState(name);
            drawer.setSecondTexture(quarters);
            operation(drawer);
            expectFixedState(name + " with a second texture");
            drawer.setSecondTexture(0);
        }
    });
    expectFixedState("endFrame");
}

TEST(State, WhatIsDeadUnknownOrFlatPaintsNothing) {
    const std::int32_t flat = polygonOf({0, 5, 50, 5, 90, 5});
    const std::int32_t none = polygonOf({});
    const Picture picture = paint([&](auto& drawer) {
        for (const std::uint32_t handle : {0u, deadHandle}) {
            drawer.drawTexture(handle, 10, 10, 20, 20, 1, 1, 1, 1);
            drawer.drawTextureRotated(handle, 10, 10, 30, 4, 4, 20, 20, 1, 1, 1, 1);
            drawer.drawTextureRegion(handle, 10, 10, 0, 0, 1, 1, 20, 20, 1, 1, 1, 1);
            drawer.drawPolygon(0, handle, 10, 10, 1, 1, 1, 1, 1, 1);
        }
        for (const std::int32_t polygon : {flat, none, -1, none + 1, 1 << 30}) {
            drawer.drawPolygon(polygon, window->quarters(), 10, 10, 1, 1, 1, 1, 1, 1);
        }
        for (const std::int32_t font : {-1, 1000, 0x7FFFFFFF}) {
            drawer.drawText("Speed:", font, 10, 10, 500, 1, 1, 1, 1, 1);
        }
    });
    EXPECT_TRUE(picture.isBlack());
}

// --- the glyph font

static const std::string glyphCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.,+-!?:_";

// A colour of its own for each glyph but the last, which stays blank.
static Pixel glyphColour(int index) {
    if (index == 43) return white;
    return {55 + index * 4, 250 - index * 5, (index * 77) % 256};
}

static void setGlyphColours() {
    for (int i = 0; i < 43; ++i) {
        const auto colourOf = [i](int, int) { return glyphColour(i); };
        window->drawer().setGlyphImage(i, makePixels(16, 16, colourOf), 16);
    }
}

static Picture paintGlyphs(const std::string& text, float x, float y, float size) {
    return paint([&](auto& drawer) { drawer.drawGlyphText(text, x, y, size, 1, 1, 1, 1); });
}

TEST(GlyphText, ShowsTheImageOfEachCharacterAndSkipsAStepForOthers) {
    setGlyphColours();
    window->drawer().setGlyphImage(0, nullptr, 16); // changes nothing, like the next three
    window->drawer().setGlyphImage(-1, makePixels(1, 1, patchwork), 1);
    window->drawer().setGlyphImage(44, makePixels(1, 1, patchwork), 1);
    window->drawer().setGlyphImage(0, makePixels(1, 1, patchwork), 0);
    const Picture all = paintGlyphs(glyphCharacters, 100, 50, 20);
    for (int i = 0; i < 44; ++i) {
        for (const int x : {1, 18}) {
            EXPECT_TRUE(all.at(100 + i * 20 + x, 51).isNear(glyphColour(i))) << glyphCharacters[i];
        }
    }
    EXPECT_EQ(all.ink(), (Picture::Box{100, 50, 100 + 44 * 20, 70}));
    const Picture some = paintGlyphs("abc xyz*\xC4\nz", 100, 100, 20);
    int place = 0;
    for (const int index : {0, 1, 2, -1, 23, 24, 25, -1, -1, -1, 25}) {
        const Pixel expected = index < 0 ? black : glyphColour(index);
        EXPECT_TRUE(some.at(110 + place * 20, 110).isNear(expected)) << place;
        ++place;
    }
}

TEST(GlyphText, IsFontNoughtAt32UnitsDoesNotWrapAndIsBlankAgainAfterAResize) {
    window->drawer().resizeWindow(GlWindow::width, GlWindow::height);
    EXPECT_EQ(paintGlyphs(glyphCharacters, 0, 0, 20).count(white), 44 * 20 * 20);
    const Picture text =
        paint([](auto& drawer) { drawer.drawText("AB Z", 0, 30, 40, 10, 1.5f, 1, 0.5f, 0, 0.5f); });
    EXPECT_EQ(text.ink(), (Picture::Box{30, 40, 30 + 4 * 48, 88}));
    EXPECT_TRUE(text.at(50, 60).isNear({128, 64, 0}));
}

// Comes last: the padding stays with the drawer for good.
TEST(GlyphText, OverlapsByThePaddingOfImagesOfOddSizes) {
    setGlyphColours();
    const auto greenOne = [](int, int) { return green; };
    window->drawer().setGlyphImage(1, makePixels(12, 12, greenOne), 12);
    const Picture sixteen = paintGlyphs("BB", 100, 50, 16);
    EXPECT_EQ(sixteen.at(105, 55), green);
    EXPECT_EQ(sixteen.at(113, 55), green) << "the second glyph, 12 units on";
    EXPECT_EQ(sixteen.at(126, 55), white) << "the padding repeats the alpha of the row's end";
    EXPECT_EQ(sixteen.ink(), (Picture::Box{100, 50, 128, 62})) << "below the image it is clear";
    const Picture ten = paintGlyphs("AAC", 100, 50, 10);
    EXPECT_EQ(ten.ink().right, 100 + 2 * 8 + 10) << "2.5 is cut to 2";
    EXPECT_TRUE(ten.at(117, 55).isNear(glyphColour(2)));
}
