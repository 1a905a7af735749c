// SPDX-License-Identifier: Zlib
// What the game itself does not use: drawing into a picture and into a part of the screen, reading
// the screen, and shader programs.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/GlWindow.h"

static GlWindow* const window = GlWindow::open();

using Sides = std::array<GLint, 4>; // left, bottom, width, height in pixels

static std::uint32_t plain(const Pixel& colour) {
    return window->makeTexture(4, 4, [&colour](int, int) { return colour; });
}

static void paintScene(OpenGLDrawer& drawer) {
    drawer.fillGradient(0, 0, 1280, 720, 10, 20, 200, 255, 250, 240, 0, 255);
    drawer.drawTexture(window->quarters(), 1200, 680, 10, 5, 1, 1, 1, 1);
    drawer.fillRect(700, 100, 40, 300, 255, 0, 255, 255);
}

// Gives the window back its size after a test that made the drawer believe in another.
class Offscreen : public testing::Test {
protected:
    ~Offscreen() override { resize(GlWindow::width, GlWindow::height); }

    static void resize(int width, int height) {
        window->drawer().resizeWindow(static_cast<std::uint16_t>(width),
                                      static_cast<std::uint16_t>(height));
    }
};

TEST_F(Offscreen, WhatIsPaintedIntoThePictureShowsUprightAndInItsPlace) {
    const Picture direct = window->paint(paintScene);
    const Picture detour = window->paint([](OpenGLDrawer& drawer) {
        drawer.beginOffscreen();
        paintScene(drawer);
        drawer.endOffscreen();
        EXPECT_TRUE(Picture::ofWindow(GlWindow::width, GlWindow::height).isBlack());
        drawer.drawTexture(drawer.offscreenTexture(), 0, 0, 1, 1, 1, 1, 1, 1);
    });
    EXPECT_EQ(detour.differenceTo(direct), "");

    resize(320, 100);
    window->drawer().beginOffscreen();
    EXPECT_EQ(realViewport(), (Sides{0, 0, 1280, 720})) << "whatever the window's size";
    window->drawer().endOffscreen();
    EXPECT_EQ(realViewport(), (Sides{71, 0, 177, 100}));
}

TEST_F(Offscreen, APartOfTheScreenIsAPartOfTheFittedPicture) {
    struct Case {
        int windowWidth, windowHeight;
        std::array<std::int16_t, 4> part; // left, top, width, height in units
        Sides viewport;
    };
    const Case cases[] = {
        {1280, 720, {-100, -50, 300, 200}, {-100, 570, 300, 200}},
        {1024, 768, {640, 360, 640, 360}, {512, 96, 512, 288}},
        {1024, 768, {1, 1, 2, 2}, {0, 671, 1, 1}}, // 0.8 and 1.6 are cut
        {2560, 1080, {0, 0, 640, 360}, {320, 540, 960, 540}},
        {2560, 1080, {30000, 0, 640, 360}, {45000 - 65536 + 320, 540, 960, 540}}, // 16 bits
    };
    for (const Case& line : cases) {
        OpenGLDrawer& drawer = window->drawer();
        resize(line.windowWidth, line.windowHeight);
        const Sides whole = realViewport();
        drawer.setViewport(line.part[0], line.part[1], line.part[2], line.part[3]);
        EXPECT_EQ(realViewport(), line.viewport) << line.windowWidth << ", " << line.part[0];
        drawer.resetViewport();
        EXPECT_EQ(realViewport(), whole);
    }
}

TEST_F(Offscreen, UnitsOfAPartStartAtItsCornerUntilItIsReset) {
    const auto paintTooMuch = [](OpenGLDrawer& drawer) {
        drawer.fillRect(-5000, -5000, 9000, 9000, 0, 0, 255, 255);
        drawer.fillRect(10, 20, 30, 40, 255, 0, 0, 255);
    };
    window->drawer().setViewport(320, 180, 640, 360);
    const Picture picture = window->paint(paintTooMuch);
    EXPECT_EQ(picture.ink(), (Picture::Box{320, 180, 960, 540}));
    EXPECT_EQ(picture.count(red), 30 * 40);
    EXPECT_EQ(picture.at(330, 200), red);
    window->drawer().resetViewport();
    EXPECT_EQ(window->paint(paintTooMuch).at(10, 20), red);
}

TEST_F(Offscreen, TheScreenIsReadRowByRowFromTheBottomWithoutGaps) {
    OpenGLDrawer& drawer = window->drawer();
    resize(1023, 700); // rows of 3069 bytes, no multiple of 4
    // It is read after the swap, so both buffers have to show the same.
    window->paint(paintScene);
    drawer.beginFrame();
    paintScene(drawer);
    const Picture expected = Picture::ofWindow(1023, 700);
    const auto bytes = drawer.readScreen();
    EXPECT_TRUE(std::equal(expected.rows().begin(), expected.rows().end(), bytes.get()));
    GLint alignment = 0;
    glGetIntegerv(GL_PACK_ALIGNMENT, &alignment);
    EXPECT_EQ(alignment, 4) << "as other programs expect it";
}

TEST(Shaders, AProgramGetsBothTexturesAndTheParameter) {
    std::string pattern = testing::TempDir() + "Shaders.XXXXXX";
    const std::string folder = mkdtemp(pattern.data());
    // The red of the first texture, the parameter as green, the blue of the second texture.
    std::ofstream(folder + "/vertex")
        << "void main() { gl_Position = ftransform();\n"
           "gl_TexCoord[0] = gl_MultiTexCoord0; gl_TexCoord[1] = gl_MultiTexCoord1; }";
    std::ofstream(folder + "/fragment")
        << "uniform sampler2D base, second;\nuniform float shaderParam;\n"
           "void main() {\n"
           "    gl_FragColor = vec4(texture2D(base, gl_TexCoord[0].st).r,\n"
           "        shaderParam, texture2D(second, gl_TexCoord[1].st).b, 1.0);\n"
           "}\n"
        << '\0' << "the text ends at its first zero byte";
    OpenGLDrawer& drawer = window->drawer();
    testing::internal::CaptureStdout();
    const std::uint32_t program = drawer.createShader(folder + "/vertex", folder + "/fragment");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "OpenGLDrawer Shader InfoLog:\n----------------------------\n" + folder +
                  "/vertex:\n" + folder + "/fragment:\n");
    const float triangle[] = {0, 0, 40, 0, 0, 40};
    const std::int32_t polygon = drawer.createPolygon(triangle, 3);
    const std::uint32_t first = plain({200, 7, 9});
    const std::uint32_t second = plain({3, 5, 100});
    const auto draw = [&](OpenGLDrawer& painter) {
        painter.drawTexture(first, 0, 0, 10, 10, 1, 1, 1, 1);
        painter.drawTextureRegion(first, 100, 0, 0, 0, 1, 1, 10, 10, 1, 1, 1, 1);
        painter.drawPolygon(polygon, first, 200, 0, 1, 1, 1, 1, 1, 1);
    };
    drawer.setShaderParam(program, 0.2f);
    drawer.setSecondTexture(second);
    const Picture both = window->paint(draw);
    const Picture next = window->paint(draw);
    drawer.setShaderParam(0, 0.5f);
    const Picture fixed = window->paint(draw);
    for (const int x : {5, 105, 205}) {
        EXPECT_TRUE(both.at(x, 5).isNear({200, 51, 100})) << x << both.at(x, 5);
        EXPECT_TRUE(next.at(x, 5).isNear({200, 51, 0})) << "the second texture lasts a frame";
        EXPECT_TRUE(fixed.at(x, 5).isNear({200, 7, 9})) << "no program";
    }
    // Files that cannot be read or compiled do no harm.
    for (const std::string& file : {std::string(), folder + "/missing", folder}) {
        drawer.setShaderParam(drawer.createShader(file, file), 1);
        window->paint(draw);
    }
    drawer.setShaderParam(0, 1);
    EXPECT_TRUE(window->paint(draw).at(5, 5).isNear({200, 7, 9}));
    std::filesystem::remove_all(folder);
}

TEST(Shaders, TheDrawerReportsWhatItCanDo) {
    OpenGLDrawer& drawer = window->drawer();
    EXPECT_TRUE(drawer.shadersAvailable());
    testing::internal::CaptureStdout();
    EXPECT_TRUE(drawer.canSupport(0) && drawer.canSupport(1));
    EXPECT_FALSE(drawer.canSupport(2));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "canSupport(Shaders) => 1\ncanSupport(FrameBuffer) => 1\n");
}
