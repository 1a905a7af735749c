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

static void paintScene(OpenGLDrawer& drawer) {
    drawer.fillGradient(0, 0, 1280, 720, 10, 20, 200, 255, 250, 240, 0, 255);
    drawer.drawTexture(window->quarters(), 1200, 680, 10, 5, 1, 1, 1, 1);
}

TEST(Offscreen, WhatIsPaintedIntoThePictureShowsUprightAndInItsPlace) {
    const Picture direct = window->paint(paintScene);
    const Picture detour = window->paint([](OpenGLDrawer& drawer) {
        drawer.beginOffscreen();
        paintScene(drawer);
        drawer.endOffscreen();
        EXPECT_TRUE(Picture::ofWindow(GlWindow::width, GlWindow::height).isBlack());
        drawer.drawTexture(drawer.offscreenTexture(), 0, 0, 1, 1, 1, 1, 1, 1);
    });
    EXPECT_EQ(detour.differenceTo(direct), "");
}

TEST(Offscreen, APartOfTheScreenHasUnitsOfItsOwnUntilItIsReset) {
    OpenGLDrawer& drawer = window->drawer();
    drawer.resizeWindow(1024, 720); // a bar of 72 pixels
    drawer.setViewport(640, 360, 640, 360);
    EXPECT_EQ(realViewport(), (std::array<GLint, 4>{512, 72, 512, 288}));
    drawer.resizeWindow(GlWindow::width, GlWindow::height);
    const auto paintTooMuch = [](OpenGLDrawer& painter) {
        painter.fillRect(-5000, -5000, 9000, 9000, 0, 0, 255, 255);
        painter.fillRect(10, 20, 30, 40, 255, 0, 0, 255);
    };
    drawer.setViewport(320, 180, 640, 360);
    const Picture picture = window->paint(paintTooMuch);
    EXPECT_EQ(picture.ink(), (Picture::Box{320, 180, 960, 540}));
    EXPECT_EQ(picture.at(330, 200), red);
    drawer.resetViewport();
    EXPECT_EQ(window->paint(paintTooMuch).at(10, 20), red);
}

TEST(Offscreen, TheScreenIsReadRowByRowFromTheBottomWithoutGaps) {
    OpenGLDrawer& drawer = window->drawer();
    drawer.resizeWindow(1023, 700); // rows of 3069 bytes, no multiple of 4
    // It is read after the swap, so both buffers have to show the same.
    window->paint(paintScene);
    drawer.beginFrame();
    paintScene(drawer);
    const Picture expected = Picture::ofWindow(1023, 700);
    const auto bytes = drawer.readScreen();
    EXPECT_TRUE(std::equal(expected.rows().begin(), expected.rows().end(), bytes.get()));
    drawer.resizeWindow(GlWindow::width, GlWindow::height);
}

TEST(Shaders, AProgramGetsBothTexturesAndTheParameter) {
    std::string pattern = testing::TempDir() + "Shaders.XXXXXX";
    const std::string folder = mkdtemp(pattern.data());
    std::ofstream(folder + "/vertex")
        << "void main() { gl_Position = ftransform();\n"
           "gl_TexCoord[0] = gl_MultiTexCoord0; gl_TexCoord[1] = gl_MultiTexCoord1; }";
    std::ofstream(folder + "/fragment")
        << "uniform sampler2D base, second;\nuniform float shaderParam;\n"
           "void main() {\n"
           "    gl_FragColor = vec4(texture2D(base, gl_TexCoord[0].st).r,\n"
           "        shaderParam, texture2D(second, gl_TexCoord[1].st).b, 1.0);\n"
           "}\n";
    OpenGLDrawer& drawer = window->drawer();
    const std::uint32_t first = window->makeTexture(4, 4, [](int, int) {
        return Pixel{200, 7, 9};
    });
    const std::uint32_t second = window->makeTexture(4, 4, [](int, int) {
        return Pixel{3, 5, 100};
    });
    const auto shown = [&] {
        const auto draw = [&](auto& d) { d.drawTexture(first, 0, 0, 10, 10, 1, 1, 1, 1); };
        return window->paint(draw).at(5, 5);
    };
    drawer.setShaderParam(drawer.createShader(folder + "/vertex", folder + "/fragment"), 0.2f);
    drawer.setSecondTexture(second);
    EXPECT_TRUE(shown().isNear({200, 51, 100}));
    EXPECT_TRUE(shown().isNear({200, 51, 0})) << "the second texture lasts a frame";
    drawer.setShaderParam(drawer.createShader(folder + "/missing", folder), 1); // does no harm
    shown();
    drawer.setShaderParam(0, 1);
    EXPECT_TRUE(shown().isNear({200, 7, 9})) << "no program";
    std::filesystem::remove_all(folder);
}
