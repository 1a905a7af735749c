// SPDX-License-Identifier: Zlib
// What the drawer paints, and the GL state that it leaves, in a real window.
#include <map>
#include <string>

#include "tests/support/GlWindow.h"

static GlWindow* const window = GlWindow::open();

static constexpr std::uint32_t deadHandle = 54321;

static Picture paint(const std::function<void(OpenGLDrawer&)>& scene) {
    return window->paint(scene);
}

// A picture in which every pixel differs from its neighbours.
static Pixel patchwork(int x, int y) {
    return {(x * 37 + 11) % 256, (y * 53 + 7) % 256, (x * 5 + y * 91) % 256};
}

static std::uint32_t plain(const Pixel& colour) {
    return window->makeTexture(8, 8, [&colour](int, int) { return colour; });
}

// --- textures

// Comes first: it counts the program's textures from the first one on.
TEST(Textures, HaveHandlesThatCountUpAndTheNewestIsGivenAgain) {
    OpenGLDrawer& drawer = window->drawer();
    const auto make = [] { return window->makeTexture(2, 2, patchwork); };
    EXPECT_EQ(make(), 3u) << "after the picture off screen and the line";
    EXPECT_EQ(make(), 4u);
    drawer.deleteTexture(4);
    EXPECT_EQ(drawer.textureRecord(4), nullptr);
    EXPECT_EQ(make(), 4u);
    const GLuint name = drawer.textureRecord(3)->name;
    drawer.deleteTexture(3);
    EXPECT_FALSE(glIsTexture(name));
    for (const std::uint32_t dead : {3u, 0u, deadHandle}) drawer.deleteTexture(dead);
    EXPECT_EQ(make(), 5u);

    EXPECT_EQ(drawer.createTexture(nullptr, 4, 4), 0u);
    for (const auto& [width, height] :
         {std::pair(0u, 1u), std::pair(1u, 0u), std::pair(65536u, 1u), std::pair(1u, 65536u)}) {
        EXPECT_EQ(drawer.createTexture(makePixels(1, 1, patchwork), width, height), 0u);
    }
}

TEST(Textures, OfOddSizesArePaddedAndShownWithoutThePadding) {
    const std::uint32_t handle = window->makeTexture(132, 68, patchwork, 254);
    std::vector<std::array<std::uint8_t, 4>> texels(256 * 128);
    glBindTexture(GL_TEXTURE_2D, window->drawer().textureRecord(handle)->name);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    const std::array<std::uint8_t, 4> fill = {254, 254, 254, 254}; // the alpha of a row's end
    EXPECT_EQ(texels[132], fill);
    EXPECT_EQ(texels[127 * 256 + 255], fill);
    EXPECT_EQ(texels[127 * 256 + 17], texels[67 * 256 + 17]);

    // Blending with an alpha of 254 would change the last bit.
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

TEST(Textures, AreFilteredAsTheDrawerWasSetWhenTheyWereMade) {
    for (const GLint filter : {GL_LINEAR, GL_NEAREST}) {
        const std::uint32_t handle = window->makeTexture(2, 1, patchwork, 255, filter == GL_LINEAR);
        glBindTexture(GL_TEXTURE_2D, window->drawer().textureRecord(handle)->name);
        const auto parameter = [](GLenum which) {
            GLint value = 0;
            glGetTexParameteriv(GL_TEXTURE_2D, which, &value);
            return value;
        };
        EXPECT_EQ(parameter(GL_TEXTURE_MIN_FILTER), filter);
        EXPECT_EQ(parameter(GL_TEXTURE_MAG_FILTER), filter);
        EXPECT_EQ(parameter(GL_TEXTURE_WRAP_S), GL_CLAMP_TO_EDGE);
        EXPECT_EQ(parameter(GL_TEXTURE_WRAP_T), GL_CLAMP_TO_EDGE);
        glBindTexture(GL_TEXTURE_2D, 0);
    }
}

// --- the picture in the window

TEST(Fitting, KeepsTheShapeOfTheScreenInEveryWindow) {
    using Sides = std::array<GLint, 4>; // left, bottom, width, height
    const std::tuple<std::uint16_t, std::uint16_t, Sides> cases[] = {
        {1920, 1080, {0, 0, 1920, 1080}},
        {1024, 768, {0, 96, 1024, 576}},
        {2560, 1080, {320, 0, 1920, 1080}},
        {1366, 768, {0, 0, 1365, 768}},
        {1, 1, {0, 0, 1, 0}}};
    OpenGLDrawer& drawer = window->drawer();
    for (const auto& [width, height, viewport] : cases) {
        drawer.resizeWindow(width, height);
        EXPECT_EQ(realViewport(), viewport) << width << " by " << height;
        const Sides reported = {drawer.viewportX(), drawer.viewportY(), drawer.viewportWidth(),
                                drawer.viewportHeight()};
        EXPECT_EQ(reported, viewport);
    }
    drawer.resizeWindow(GlWindow::width, GlWindow::height);
}

TEST(Fitting, LeavesTheBarsBlackAndAFrameStartsCleared) {
    const auto tooMuch = [](auto& drawer) {
        drawer.fillRect(-2000, -2000, 6000, 6000, 255, 255, 255, 255);
    };
    window->drawer().resizeWindow(640, 720); // the lower left part of the real window
    EXPECT_EQ(paint(tooMuch).ink(), (Picture::Box{0, 180, 640, 540}));
    window->drawer().resizeWindow(1280, 360);
    EXPECT_EQ(paint(tooMuch).ink(), (Picture::Box{320, 360, 960, 720}));
    window->drawer().resizeWindow(GlWindow::width, GlWindow::height);
    EXPECT_TRUE(paint([](auto&) {}).isBlack());
}

TEST(Fitting, ResizingDeletesWhatItReplaces) {
    const auto countObjects = [] {
        int count = 0;
        for (GLuint name = 1; name < 5000; ++name) {
            count += glIsTexture(name) + glIsFramebufferEXT(name) + glIsRenderbufferEXT(name);
        }
        return count;
    };
    const int before = countObjects();
    window->drawer().resizeWindow(GlWindow::width, GlWindow::height);
    EXPECT_EQ(countObjects(), before);
}

TEST(Fitting, ClippingIsRoundedOutwardPlusAPixel) {
    const Picture picture = paint([](auto& drawer) {
        drawer.translate(7, 7);
        drawer.clip(100.5f, 50, 30, 20.25f);
        drawer.fillRect(0, 0, 500, 500, 255, 255, 255, 255);
        drawer.stopClipping();
    });
    EXPECT_EQ(picture.ink(), (Picture::Box{99, 49, 132, 72}));
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
    EXPECT_TRUE(turned.at(50 + 47, 60 + 59).isNear(patchwork(11, 5)));
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

// --- shapes that the game does not use

TEST(Shapes, PolygonsAreTexturedOverTheirBoundingBox) {
    const auto paintPolygon = [](const std::vector<float>& points, std::uint32_t handle) {
        const std::int32_t polygon = window->drawer().createPolygon(
            points.data(), static_cast<std::int32_t>(points.size() / 2));
        return paint(
            [=](auto& drawer) { drawer.drawPolygon(polygon, handle, 300, 200, 2, 1, 1, 1, 1, 1); });
    };
    const Picture diamond = paintPolygon({0, -50, 50, 0, 0, 50, -50, 0}, window->quarters());
    EXPECT_EQ(diamond.at(260, 180), red);
    EXPECT_EQ(diamond.at(340, 180), green);
    EXPECT_EQ(diamond.at(260, 220), blue);
    EXPECT_EQ(diamond.at(340, 220), white);
    EXPECT_EQ(diamond.at(210, 160), black);
    EXPECT_EQ(paintPolygon({90, 0, 80, 90, 0, 40}, window->quarters()).at(460, 220), red)
        << "where x only falls, the left edge of the texture is all that shows";
}

TEST(Shapes, LinesAreSoftAcrossAndHardAtTheirEnds) {
    const Picture picture = paint([](auto& drawer) {
        drawer.drawLine(300, 220, 300, 120, 1, 0, 0, 1);
        drawer.drawLine(400, 400, 500, 500, 1, 1, 1, 1);
        drawer.drawLine(700, 300, 700, 300, 1, 1, 1, 1); // no length
    });
    int x = 296;
    for (const int level : {2, 33, 192, 255, 255, 192, 33, 2}) {
        EXPECT_TRUE(picture.at(x, 120).isNear({level, 0, 0}, 3)) << x;
        EXPECT_EQ(picture.at(x++, 119), black);
    }
    EXPECT_EQ(picture.at(450, 450), white);
    EXPECT_EQ(picture.at(456, 444), black) << "8.5 units off the line";
    EXPECT_LT(picture.ink().right, 510) << "nothing at 700, 300";
}

// --- plain shapes

TEST(Shapes, RectanglesAndGradientsFillToTheirEdges) {
    const Picture picture = paint([](auto& drawer) {
        drawer.fillRect(10, 20, 30, 40, 200, 100, 50, 255);
        drawer.fillRect(300, 20, 0, 40, 255, 255, 255, 255); // no width
        drawer.fillGradient(100, 20, 50, 200, 0, 0, 255, 255, 200, 100, 0, 255);
        drawer.fillRect(0, 400, 100, 200, 0, 200, 0, 255);
        drawer.fillGradient(0, 400, 50, 200, 200, 0, 0, 255, 200, 0, 0, 0);
        drawer.fillGradient(50, 400, 50, 200, 200, 0, 0, 0, 200, 0, 0, 255);
    });
    EXPECT_EQ(picture.count({200, 100, 50}), 30 * 40);
    EXPECT_TRUE(picture.at(100, 20).isNear({0, 0, 255}));
    EXPECT_TRUE(picture.at(149, 120).isNear({100, 50, 128}));
    EXPECT_TRUE(picture.at(100, 219).isNear({200, 100, 0}));
    EXPECT_TRUE(picture.at(25, 599).isNear({0, 200, 0})) << "clear at the bottom";
    EXPECT_TRUE(picture.at(75, 400).isNear({0, 200, 0})) << "clear at the top";
    EXPECT_EQ(picture.ink(), (Picture::Box{0, 20, 150, 600}));
}

TEST(Shapes, AreBlendedByTheModeLastSetWhichFramesKeep) {
    const Pixel mixed = {150, 50, 70};
    const Pixel added = {200, 100, 120};
    const std::pair<std::vector<int>, Pixel> cases[] = {
        {{}, mixed},     {{1}, added},    {{2}, {28, 0, 0}},    // 200 x 100 / 255 - 100 x 128 / 255
        {{2, 1}, added}, {{2, 0}, mixed}, {{1, 3, -1}, added}}; // 3 and -1 are not modes
    for (const auto& [modes, expected] : cases) {
        for (const int mode : modes) window->drawer().setBlendMode(mode);
        const Picture picture = paint([](auto& drawer) {
            glDisable(GL_BLEND);
            drawer.drawTexture(plain({100, 100, 100}), 0, 0, 1, 1, 1, 1, 1, 1);
            glEnable(GL_BLEND);
            drawer.fillRect(0, 0, 4, 10, 200, 0, 40, 128);
            drawer.fillRect(4, 0, 4, 10, 50, 0, 0, 255);
        });
        window->drawer().setBlendMode(0);
        EXPECT_TRUE(picture.at(2, 5).isNear(expected)) << picture.at(2, 5);
        if (expected == added) {
            EXPECT_EQ(picture.at(6, 5), (Pixel{150, 100, 100})) << "opaque paint is added, too";
        }
    }
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
    std::array<GLfloat, 16> matrix = {};
    glGetFloatv(GL_MODELVIEW_MATRIX, matrix.data());
    EXPECT_EQ(matrix, (std::array<GLfloat, 16>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
    glGetFloatv(GL_PROJECTION_MATRIX, matrix.data());
    EXPECT_FLOAT_EQ(matrix[0], 2.0f / 1280);
    EXPECT_FLOAT_EQ(matrix[5], -2.0f / 720);
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
    EXPECT_EQ(realViewport(), (std::array<GLint, 4>{0, 0, 1280, 720}));
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
        {"setGlyphImage", [](auto& d) { d.setGlyphImage(3, makePixels(8, 8, patchwork), 8); }},
        {"createFont", [](auto& d) { d.createFont("MarsNeedsCunnilingus.ttf", 12); }},
        {"drawTexture", [&](auto& d) { d.drawTexture(quarters, 1, 2, 3, 4, 1, 0, 1, 0.5f); }},
        {"drawTextureRotated",
         [&](auto& d) { d.drawTextureRotated(quarters, 1, 2, 3, 4, 4, 3, 4, 1, 0, 1, 1); }},
        {"drawPolygon", [&](auto& d) { d.drawPolygon(polygon, quarters, 1, 2, 3, 4, 1, 0, 1, 1); }},
        {"glyph text", [](auto& d) { d.drawText("GO!", 0, 1, 2, 100, 1, 1, 0, 1, 1); }},
        {"font text", [&](auto& d) { d.drawText("GO!", font, 1, 2, 10, 1, 1, 0, 1, 1); }},
        {"drawLine", [](auto& d) { d.drawLine(1, 2, 3, 4, 1, 0, 1, 1); }},
        {"fillRect", [](auto& d) { d.fillRect(1, 2, 3, 4, 1, 0, 1, 255); }},
        {"clip and back", [](auto& d) { d.clip(9, 9, 9, 9), d.stopClipping(); }},
    };
    paint([&](auto& drawer) {
        expectFixedState("beginFrame");
        drawer.setSecondTexture(quarters);
        for (const auto& [name, operation] : operations) {
            operation(drawer);
            expectFixedState(name);
        }
    });
    expectFixedState("endFrame");
}

TEST(State, WhatIsDeadUnknownOrFlatPaintsNothing) {
    const float row[] = {0, 5, 50, 5, 90, 5};
    const std::int32_t flat = window->drawer().createPolygon(row, 3);
    const std::int32_t none = window->drawer().createPolygon(row, 0);
    const Picture picture = paint([&](auto& drawer) {
        drawer.drawTexture(deadHandle, 10, 10, 20, 20, 1, 1, 1, 1);
        drawer.drawTextureRotated(deadHandle, 10, 10, 30, 4, 4, 20, 20, 1, 1, 1, 1);
        drawer.drawTextureRegion(deadHandle, 10, 10, 0, 0, 1, 1, 20, 20, 1, 1, 1, 1);
        drawer.drawPolygon(0, deadHandle, 10, 10, 1, 1, 1, 1, 1, 1);
        for (const std::int32_t polygon : {flat, none, -1, none + 1}) {
            drawer.drawPolygon(polygon, window->quarters(), 10, 10, 1, 1, 1, 1, 1, 1);
        }
        for (const std::int32_t font : {-1, 1000}) {
            drawer.drawText("Speed:", font, 10, 10, 500, 1, 1, 1, 1, 1);
        }
    });
    EXPECT_TRUE(picture.isBlack());
}

// --- the glyph font

// The last glyph stays blank.
TEST(GlyphText, ShowsTheImageOfEachCharacterAndAGapForOthers) {
    const std::string signs = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.,+-!?:_";
    const auto colourOf = [](int glyph) {
        return glyph == 43 ? white : Pixel{55 + glyph * 4, 250 - glyph * 5, (glyph * 77) % 256};
    };
    OpenGLDrawer& drawer = window->drawer();
    for (int i = 0; i < 43; ++i) {
        drawer.setGlyphImage(i, makePixels(16, 16, [&](int, int) { return colourOf(i); }), 16);
    }
    drawer.setGlyphImage(0, nullptr, 16); // these change nothing
    drawer.setGlyphImage(-1, makePixels(1, 1, patchwork), 1);
    drawer.setGlyphImage(44, makePixels(1, 1, patchwork), 1);
    drawer.setGlyphImage(0, makePixels(1, 1, patchwork), 0);
    const Picture all = paint([&](auto& d) { d.drawGlyphText(signs, 100, 50, 20, 1, 1, 1, 1); });
    for (int i = 0; i < 44; ++i) {
        EXPECT_TRUE(all.at(100 + i * 20 + 1, 51).isNear(colourOf(i))) << signs[i];
        EXPECT_TRUE(all.at(100 + i * 20 + 18, 51).isNear(colourOf(i))) << signs[i];
    }
    EXPECT_EQ(all.ink(), (Picture::Box{100, 50, 100 + 44 * 20, 70}));
    const Picture text = // a glyph of font 0 is 32 units wide, and the text is not wrapped
        paint([](auto& d) { d.drawText("az *\xC4\nz", 0, 100, 100, 10, 0.5f, 1, 1, 0, 0.5f); });
    int place = 108;
    for (const int glyph : {0, 25, -1, -1, -1, -1, 25}) {
        const Pixel colour = glyph < 0 ? black : colourOf(glyph);
        EXPECT_TRUE(text.at(place, 108).isNear({colour.r / 2, colour.g / 2, 0})) << place;
        place += 16;
    }
}

// Comes last: the padding stays with the drawer.
TEST(GlyphText, IsBlankAgainAfterAResizeAndOverlapsByThePaddingOfOddImages) {
    OpenGLDrawer& drawer = window->drawer();
    drawer.resizeWindow(GlWindow::width, GlWindow::height);
    const auto write = [](const std::string& text, float size) {
        return paint([&](auto& d) { d.drawGlyphText(text, 100, 50, size, 1, 1, 1, 1); });
    };
    EXPECT_EQ(write("AB", 20).count(white), 2 * 20 * 20);
    drawer.setGlyphImage(1, makePixels(12, 12, [](int, int) { return green; }), 12);
    const Picture sixteen = write("BB", 16);
    EXPECT_EQ(sixteen.at(105, 55), green);
    EXPECT_EQ(sixteen.at(113, 55), green) << "the second glyph, 12 units on";
    EXPECT_EQ(sixteen.at(126, 55), white) << "the padding repeats the alpha of the row's end";
    EXPECT_EQ(sixteen.ink(), (Picture::Box{100, 50, 128, 62})) << "below the image it is clear";
    EXPECT_EQ(write("AAC", 10).ink().right, 100 + 2 * 8 + 10) << "2.5 is cut to 2";
}
