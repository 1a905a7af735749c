// SPDX-License-Identifier: Zlib
// What the drawer paints, and the GL state that it leaves, in a real window.
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

// --- textures

// Comes first: it counts the program's textures from the first one on.
TEST(Textures, HaveHandlesThatCountUpAndTheNewestIsGivenAgain) {
    OpenGLDrawer& drawer = window->drawer();
    const auto make = [] { return window->makeTexture(2, 2, patchwork); };
    EXPECT_EQ(make(), 3u) << "after the picture off screen and the line";
    EXPECT_EQ(make(), 4u);
    const GLuint name = drawer.textureRecord(4)->name;
    drawer.deleteTexture(4);
    EXPECT_FALSE(glIsTexture(name));
    EXPECT_EQ(drawer.textureRecord(4), nullptr);
    EXPECT_EQ(make(), 4u);
    for (const std::uint32_t dead : {3u, 3u, 0u, deadHandle}) drawer.deleteTexture(dead);
    EXPECT_EQ(make(), 5u);
    EXPECT_EQ(drawer.createTexture(nullptr, 4, 4), 0u);
    EXPECT_EQ(drawer.createTexture(makePixels(1, 1, patchwork), 0, 1), 0u);
    EXPECT_EQ(drawer.createTexture(makePixels(1, 1, patchwork), 1, 65536), 0u);
}

TEST(Textures, OfOddSizesArePaddedAndShownWithoutThePadding) {
    const std::uint32_t handle = window->makeTexture(132, 68, patchwork, 254);
    std::vector<std::array<std::uint8_t, 4>> texels(256 * 128);
    glBindTexture(GL_TEXTURE_2D, window->drawer().textureRecord(handle)->name);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
    GLint wrap = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, &wrap);
    EXPECT_EQ(wrap, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
    const std::array<std::uint8_t, 4> fill = {254, 254, 254, 254}; // the alpha of a row's end
    EXPECT_EQ(texels[132], fill);
    EXPECT_EQ(texels[127 * 256 + 255], fill);
    EXPECT_EQ(texels[127 * 256 + 17], texels[67 * 256 + 17]);

    const Picture picture =
        paint([&](auto& drawer) { drawer.drawTexture(handle, 100, 200, 1, 1, 1, 1, 1, 1); });
    int wrong = 0;
    for (int y = 0; y < 68; ++y) {
        for (int x = 0; x < 132; ++x) {
            wrong += !picture.at(100 + x, 200 + y).isNear(patchwork(x, y), 3);
        }
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(picture.ink(), (Picture::Box{100, 200, 232, 268}));
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
    window->drawer().resizeWindow(640, 720); // the lower left part of the real window
    const Picture tooMuch =
        paint([](auto& drawer) { drawer.fillRect(-2000, -2000, 6000, 6000, 255, 255, 255, 255); });
    EXPECT_EQ(tooMuch.ink(), (Picture::Box{0, 180, 640, 540}));
    window->drawer().resizeWindow(GlWindow::width, GlWindow::height);
    EXPECT_TRUE(paint([](auto&) {}).isBlack());
}

TEST(Background, IsTheSameFromTheCopy) {
    OpenGLDrawer& drawer = window->drawer();
    const auto copyFrameBuffer = glBlitFramebufferEXT;
    for (const auto& [width, function] : {std::pair{1280, copyFrameBuffer},
                                          {500, copyFrameBuffer},
                                          {1280, nullptr},
                                          {500, nullptr}}) {
        glBlitFramebufferEXT = function;
        drawer.resizeWindow(static_cast<std::uint16_t>(width), 720);
        int painted = 0;
        const auto show = [&] {
            return paint([&](auto&) {
                drawer.drawBackground(1, [&] {
                    ++painted;
                    drawer.fillGradient(0, 0, 1280, 720, 255, 0, 9, 255, 0, 200, 99, 255);
                    drawer.drawTexture(window->quarters(), 100, 0, 20, 90, 1, 1, 1, 0.5f);
                    drawer.drawTexture(window->quarters(), 1000, 0, 20, 90, 1, 1, 1, 0.5f);
                });
                drawer.drawTexture(window->quarters(), 0, 0, 40, 40, 0.5f, 1, 1, 0.5f);
            });
        };
        const Picture first = show();
        EXPECT_EQ(show().differenceTo(first), "");
        EXPECT_EQ(painted, 1);
    }
    glBlitFramebufferEXT = copyFrameBuffer;
    drawer.resizeWindow(GlWindow::width, GlWindow::height);
}

// --- textured quads

TEST(Quads, AreScaledAndMirroredAboutTheirPlace) {
    const Picture picture = paint(
        [](auto& drawer) { drawer.drawTexture(window->quarters(), 180, 200, -10, 5, 1, 1, 1, 1); });
    EXPECT_EQ(picture.ink(), (Picture::Box{100, 200, 180, 240}));
    EXPECT_EQ(picture.at(101, 201), green);
    EXPECT_EQ(picture.at(178, 201), red);
    EXPECT_EQ(picture.at(101, 238), white);
}

TEST(Quads, TurnClockwiseAboutAPivotInPixelsOfTheImage) {
    struct Case {
        float angle, pivotX, pivotY, scaleX;
        Picture::Box box;
        Pixel topLeft, topRight; // of that box
    };
    for (const Case& turn : {Case{90, 0, 0, 10, {320, 300, 400, 380}, blue, red},
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
    const float points[] = {0, -50, 50, 0, 0, 50, -50, 0};
    const std::int32_t polygon = window->drawer().createPolygon(points, 4);
    const Picture diamond = paint([&](auto& drawer) {
        drawer.drawPolygon(polygon, window->quarters(), 300, 200, 2, 1, 1, 1, 1, 1);
    });
    EXPECT_EQ(diamond.at(260, 180), red);
    EXPECT_EQ(diamond.at(340, 180), green);
    EXPECT_EQ(diamond.at(260, 220), blue);
    EXPECT_EQ(diamond.at(340, 220), white);
    EXPECT_EQ(diamond.at(210, 160), black);
}

TEST(Shapes, LinesAreSoftAcrossAndHardAtTheirEnds) {
    const Picture picture = paint([](auto& drawer) {
        drawer.drawLine(300, 220, 300, 120, 1, 0, 0, 1);
        drawer.drawLine(700, 300, 700, 300, 1, 1, 1, 1); // no length
    });
    int x = 296;
    for (const int level : {2, 33, 192, 255, 255, 192, 33, 2}) {
        EXPECT_TRUE(picture.at(x, 120).isNear({level, 0, 0}, 3)) << x;
        EXPECT_EQ(picture.at(x++, 119), black);
    }
    EXPECT_LT(picture.ink().right, 510) << "nothing at 700, 300";
}

// --- plain shapes

TEST(Shapes, RectanglesAndGradientsFillToTheirEdges) {
    const Picture picture = paint([](auto& drawer) {
        drawer.fillRect(10, 20, 30, 40, 200, 100, 50, 255);
        drawer.fillGradient(100, 20, 50, 200, 0, 0, 255, 255, 200, 100, 0, 255);
        drawer.fillRect(0, 400, 50, 200, 0, 200, 0, 255);
        drawer.fillGradient(0, 400, 50, 200, 200, 0, 0, 255, 200, 0, 0, 0);
    });
    EXPECT_EQ(picture.count({200, 100, 50}), 30 * 40);
    EXPECT_TRUE(picture.at(100, 20).isNear({0, 0, 255}));
    EXPECT_TRUE(picture.at(149, 120).isNear({100, 50, 128}));
    EXPECT_TRUE(picture.at(100, 219).isNear({200, 100, 0}));
    EXPECT_TRUE(picture.at(25, 599).isNear({0, 200, 0})) << "clear at the bottom";
    EXPECT_EQ(picture.ink(), (Picture::Box{0, 20, 150, 600}));
}

TEST(Shapes, AreBlendedByTheModeLastSetWhichFramesKeep) {
    const std::uint32_t grey = window->makeTexture(8, 8, [](int, int) {
        return Pixel{100, 100, 100};
    });
    const Pixel added = {200, 100, 120};
    const std::pair<int, Pixel> cases[] = {
        {0, {150, 50, 70}}, {2, {28, 0, 0}}, {1, added}, {3, added}, {-1, added}}; // no modes
    Picture picture = paint([](auto&) {});
    for (const auto& [mode, expected] : cases) {
        window->drawer().setBlendMode(mode);
        picture = paint([&](auto& drawer) {
            glDisable(GL_BLEND);
            drawer.drawTexture(grey, 0, 0, 1, 1, 1, 1, 1, 1);
            glEnable(GL_BLEND);
            drawer.fillRect(0, 0, 4, 10, 200, 0, 40, 128);
            drawer.fillRect(4, 0, 4, 10, 50, 0, 0, 255);
        });
        EXPECT_TRUE(picture.at(2, 5).isNear(expected)) << mode << picture.at(2, 5);
    }
    EXPECT_EQ(picture.at(6, 5), (Pixel{150, 100, 100})) << "opaque paint is added, too";
    window->drawer().setBlendMode(0);
}

// --- what is left behind

static void expectFixedState(std::size_t after) {
    SCOPED_TRACE("operation " + std::to_string(after));
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
    EXPECT_EQ(integer(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    EXPECT_EQ(integer(GL_TEXTURE_BINDING_2D), 0);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    glActiveTextureARB(GL_TEXTURE1_ARB);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    glActiveTextureARB(GL_TEXTURE0_ARB);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
}

TEST(State, IsTheSameAfterEveryOperation) {
    const float triangle[] = {0, 0, 10, 0, 0, 10};
    const std::uint32_t quarters = window->quarters();
    const std::int32_t polygon = window->drawer().createPolygon(triangle, 3);
    const std::int32_t font = window->drawer().createFont("MarsNeedsCunnilingus.ttf", 24);
    ASSERT_GT(font, 0);
    const std::function<void(OpenGLDrawer&)> operations[] = {
        [&](auto& d) { d.setSecondTexture(quarters); },
        [](auto& d) { d.resizeWindow(1280, 720); },
        [](auto& d) { d.createTexture(makePixels(3, 3, patchwork), 3, 3); },
        [](auto& d) { d.createFont("MarsNeedsCunnilingus.ttf", 12); },
        [&](auto& d) { d.drawTexture(quarters, 1, 2, 3, 4, 1, 0, 1, 0.5f); },
        [&](auto& d) { d.drawTextureRotated(quarters, 1, 2, 3, 4, 4, 3, 4, 1, 0, 1, 1); },
        [&](auto& d) { d.drawPolygon(polygon, quarters, 1, 2, 3, 4, 1, 0, 1, 1); },
        [](auto& d) { d.drawText("GO!", 0, 1, 2, 100, 1, 1, 0, 1, 1); },
        [&](auto& d) { d.drawText("GO!", font, 1, 2, 10, 1, 1, 0, 1, 1); },
        [](auto& d) { d.drawLine(1, 2, 3, 4, 1, 0, 1, 1); },
        [](auto& d) { d.fillRect(1, 2, 3, 4, 1, 0, 1, 255); },
        [](auto& d) { d.drawBackground(9, [] {}); },
        [](auto& d) { d.drawBackground(9, [] {}); }};
    paint([&](auto& drawer) {
        for (const auto& operation : operations) {
            operation(drawer);
            expectFixedState(static_cast<std::size_t>(&operation - operations));
        }
    });
}

TEST(State, WhatIsDeadOrUnknownPaintsNothing) {
    const Picture picture = paint([&](auto& drawer) {
        drawer.drawTexture(deadHandle, 10, 10, 20, 20, 1, 1, 1, 1);
        drawer.drawTextureRotated(deadHandle, 10, 10, 30, 4, 4, 20, 20, 1, 1, 1, 1);
        drawer.drawTextureRegion(deadHandle, 10, 10, 0, 0, 1, 1, 20, 20, 1, 1, 1, 1);
        for (const std::int32_t polygon : {-1, 1000}) {
            drawer.drawPolygon(polygon, window->quarters(), 10, 10, 1, 1, 1, 1, 1, 1);
        }
        drawer.drawText("Speed:", 1000, 10, 10, 500, 1, 1, 1, 1, 1);
    });
    EXPECT_TRUE(picture.isBlack());
}

// --- the glyph font

TEST(GlyphText, ShowsTheImageOfEachCharacterAndAGapForOthers) {
    const std::string signs = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.,+-!?:";
    const auto colourOf = [](int glyph) {
        return Pixel{55 + glyph * 4, 250 - glyph * 5, (glyph * 77) % 256};
    };
    OpenGLDrawer& drawer = window->drawer();
    for (int i = 0; i < 43; ++i) {
        drawer.setGlyphImage(i, makePixels(16, 16, [&](int, int) { return colourOf(i); }), 16);
    }
    for (const int place : {-1, 44}) drawer.setGlyphImage(place, makePixels(1, 1, patchwork), 1);
    const Picture all = paint([&](auto& d) { d.drawGlyphText(signs, 100, 50, 20, 1, 1, 1, 1); });
    for (int i = 0; i < 43; ++i) {
        EXPECT_TRUE(all.at(100 + i * 20 + 1, 51).isNear(colourOf(i))) << "glyph " << i;
        EXPECT_TRUE(all.at(100 + i * 20 + 18, 51).isNear(colourOf(i))) << "glyph " << i;
    }
    EXPECT_EQ(all.ink(), (Picture::Box{100, 50, 100 + 43 * 20, 70}));
    const Picture text = // a glyph of font 0 is 32 units wide, and the text is not wrapped
        paint([](auto& d) { d.drawText("az *\xC4\nz", 0, 100, 100, 10, 0.5f, 1, 1, 0, 0.5f); });
    int place = 108;
    for (const int glyph : {0, 25, -1, -1, -1, -1, 25}) {
        const Pixel colour = glyph < 0 ? black : colourOf(glyph);
        EXPECT_TRUE(text.at(place, 108).isNear({colour.r / 2, colour.g / 2, 0})) << place;
        place += 16;
    }
}

TEST(GlyphText, OverlapsByThePaddingOfOddSizes) {
    window->drawer().setGlyphImage(0, makePixels(12, 12, [](int, int) { return red; }), 12);
    const Picture text = paint([](auto& d) { d.drawGlyphText("AA", 100, 50, 32, 1, 1, 1, 1); });
    EXPECT_EQ(text.ink(), (Picture::Box{100, 50, 100 + 24 + 32, 82})); // the second begins 24 on
}
