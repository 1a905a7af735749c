// SPDX-License-Identifier: Zlib
// Drawing into a picture and into a part of the screen, reading the screen, and shader programs, in
// a real window.
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

static void paintQuarters(OpenGLDrawer& drawer, float x, float y) {
    drawer.drawTexture(window->quarters(), x, y, 10, 5, 1, 1, 1, 1);
}

// Gives the window back its size after a test that made the drawer believe in another.
class Offscreen : public testing::Test {
protected:
    ~Offscreen() override { window->drawer().resizeWindow(GlWindow::width, GlWindow::height); }

    static void resize(int width, int height) {
        window->drawer().resizeWindow(static_cast<std::uint16_t>(width),
                                      static_cast<std::uint16_t>(height));
    }
};

// --- the picture

TEST_F(Offscreen, WhatIsPaintedIntoThePictureShowsUprightAndInItsPlace) {
    const auto scene = [](OpenGLDrawer& drawer) {
        drawer.fillGradient(0, 0, 1280, 720, 10, 20, 200, 255, 250, 240, 0, 255);
        paintQuarters(drawer, 1200, 680);
        drawer.drawTextureRotated(window->quarters(), 300, 200, 90, 4, 4, 20, 10, 1, 1, 1, 1);
        drawer.fillRect(700, 100, 40, 300, 255, 0, 255, 255);
    };
    const Picture direct = window->paint(scene);
    const Picture detour = window->paint([&scene](OpenGLDrawer& drawer) {
        drawer.beginOffscreen();
        scene(drawer);
        drawer.endOffscreen();
        EXPECT_TRUE(Picture::ofWindow(GlWindow::width, GlWindow::height).isBlack());
        drawer.drawTexture(drawer.offscreenTexture(), 0, 0, 1, 1, 1, 1, 1, 1);
    });
    EXPECT_EQ(detour.differenceTo(direct), "");
}

TEST_F(Offscreen, ThePictureIsATextureOfTheVirtualScreenInEveryWindow) {
    OpenGLDrawer& drawer = window->drawer();
    resize(320, 100);
    const TextureRecord* record = drawer.textureRecord(drawer.offscreenTexture());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->width, 1280);
    EXPECT_EQ(record->height, 720);
    drawer.beginOffscreen();
    EXPECT_EQ(realViewport(), (Sides{0, 0, 1280, 720}));
    paintQuarters(drawer, 0, 0);
    EXPECT_EQ(Picture::ofWindow(1280, 720).at(2, 719 - 2), red) << "the first row at the bottom";
    drawer.endOffscreen();
    EXPECT_EQ(realViewport(), (Sides{71, 0, 177, 100}));
}

// --- a part of the screen

TEST_F(Offscreen, APartOfTheScreenIsAPartOfTheFittedPicture) {
    struct Case {
        int windowWidth, windowHeight;
        std::array<std::int16_t, 4> part; // left, top, width, height in units
        Sides viewport;
    };
    const Case cases[] = {
        {1280, 720, {-100, -50, 300, 200}, {-100, 570, 300, 200}},
        {1024, 768, {640, 360, 640, 360}, {512, 96, 512, 288}},
        {1024, 768, {1, 1, 2, 2}, {0, 671, 1, 1}}, // 0.8, 1.6 are cut
        {2560, 1080, {0, 0, 640, 360}, {320, 540, 960, 540}},
        {1366, 768, {0, 0, 1280, 720}, {0, 0, 1365, 768}},
        // 16 bits of the pixels are kept. GL takes no negative width and then keeps what it has.
        {2560, 1080, {30000, 0, 640, 360}, {45000 - 65536 + 320, 540, 960, 540}},
        {2560, 1080, {0, 0, 32767, 360}, {320, 0, 1920, 1080}},
    };
    for (const Case& line : cases) {
        OpenGLDrawer& drawer = window->drawer();
        resize(line.windowWidth, line.windowHeight);
        const Sides whole = realViewport();
        drawer.setViewport(line.part[0], line.part[1], line.part[2], line.part[3]);
        EXPECT_EQ(realViewport(), line.viewport) << line.windowWidth << ", " << line.part[0];
        drawer.resetViewport();
        EXPECT_EQ(realViewport(), whole);
        glGetError();
    }
}

TEST_F(Offscreen, InAPartUnitsStayUnitsFromItsCornerUntilItIsReset) {
    const auto paintTooMuch = [](OpenGLDrawer& drawer) {
        drawer.fillRect(-5000, -5000, 9000, 9000, 0, 0, 255, 255);
        drawer.fillRect(10, 20, 30, 40, 255, 0, 0, 255);
    };
    window->drawer().setViewport(320, 180, 640, 360);
    for (int frame = 0; frame < 2; ++frame) { // a new frame does not undo it
        const Picture picture = window->paint(paintTooMuch);
        EXPECT_EQ(picture.ink(), (Picture::Box{320, 180, 960, 540}));
        EXPECT_EQ(picture.count(red), 30 * 40);
        EXPECT_EQ(picture.at(330, 200), red);
        EXPECT_EQ(picture.at(359, 239), red);
    }
    window->drawer().beginOffscreen();
    window->drawer().endOffscreen(); // ends it too
    EXPECT_EQ(window->paint(paintTooMuch).at(10, 20), red);
}

// --- reading the screen

TEST_F(Offscreen, TheScreenIsReadTightRowByRowFromTheBottom) {
    const auto scene = [](OpenGLDrawer& drawer) {
        drawer.fillGradient(0, 0, 1280, 720, 0, 10, 250, 255, 255, 130, 20, 255);
        paintQuarters(drawer, 40, 30);
        paintQuarters(drawer, 1190, 670);
    };
    // Rows of 3840, 3069 and 3 bytes; of these only the first is a multiple of 4.
    for (const auto& [width, height] :
         {std::pair(1280, 720), std::pair(1023, 700), std::pair(1, 3)}) {
        OpenGLDrawer& drawer = window->drawer();
        resize(width, height);
        // It is read after the swap, so the buffer behind has to show the same.
        window->paint(scene);
        drawer.beginFrame();
        scene(drawer);
        const Picture expected = Picture::ofWindow(width, height);
        const auto bytes = drawer.readScreen();
        int wrong = 0;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const std::uint8_t* pixel = &bytes[static_cast<std::size_t>(y * width + x) * 3];
                wrong += Pixel{pixel[0], pixel[1], pixel[2]} != expected.at(x, height - 1 - y);
            }
        }
        EXPECT_EQ(wrong, 0) << width << " by " << height;
        GLint alignment = 0;
        glGetIntegerv(GL_PACK_ALIGNMENT, &alignment);
        EXPECT_EQ(alignment, 4) << "as other programs expect it";
    }
}

// --- shaders

class Shaders : public testing::Test {
protected:
    Shaders() {
        std::string pattern = testing::TempDir() + "Shaders.XXXXXX";
        folder = mkdtemp(pattern.data());
    }
    ~Shaders() override {
        window->drawer().setShaderParam(0, 0);
        glGetError();
        std::filesystem::remove_all(folder);
    }

    std::string writeFile(const std::string& name, const std::string& text) const {
        const std::string path = folder + "/" + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    // Makes a program of two files and holds what is printed.
    static std::uint32_t makeProgram(const std::string& vertex, const std::string& fragment) {
        testing::internal::CaptureStdout();
        const std::uint32_t program = window->drawer().createShader(vertex, fragment);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "OpenGLDrawer Shader InfoLog:\n----------------------------\n" + vertex + ":\n" +
                      fragment + ":\n");
        EXPECT_NE(program, 0u);
        return program;
    }

    // The middle of a quad of this texture.
    static Pixel painted(std::uint32_t handle) {
        const Picture picture = window->paint([handle](OpenGLDrawer& drawer) {
            drawer.drawTexture(handle, 0, 0, 10, 10, 1, 1, 1, 1);
        });
        return picture.at(20, 20);
    }

    std::string folder;
};

TEST_F(Shaders, AProgramGetsBothTexturesAndTheParameter) {
    // The red of the first texture, the blue of the second, and the parameter as green. The texts
    // end at their first zero byte.
    const std::string behind = std::string(1, '\0') + "no shader at all";
    const std::uint32_t program = makeProgram(
        writeFile("vertex",
                  "void main() { gl_Position = ftransform();\n"
                  "gl_TexCoord[0] = gl_MultiTexCoord0; gl_TexCoord[1] = gl_MultiTexCoord1; }\n" +
                      behind),
        writeFile("fragment", "uniform sampler2D base, second;\nuniform float shaderParam;\n"
                              "void main() {\n"
                              "    gl_FragColor = vec4(texture2D(base, gl_TexCoord[0].st).r,\n"
                              "        shaderParam, texture2D(second, gl_TexCoord[1].st).b, 1.0);\n"
                              "}\n" +
                                  behind));
    OpenGLDrawer& drawer = window->drawer();
    const std::uint32_t first = plain({200, 7, 9});
    const std::uint32_t second = plain({3, 5, 100});
    const float triangle[] = {0, 0, 40, 0, 0, 40};
    const std::int32_t polygon = drawer.createPolygon(triangle, 3);
    for (const auto& [parameter, byte] : {std::pair(0.2f, 51), std::pair(1.0f, 255)}) {
        const Picture picture = window->paint([&](OpenGLDrawer& painter) {
            painter.setShaderParam(program, parameter);
            painter.setSecondTexture(second);
            painter.drawTexture(first, 0, 0, 10, 10, 1, 1, 1, 1);
            painter.drawTextureRegion(first, 100, 0, 0, 0, 1, 1, 10, 10, 1, 1, 1, 1);
            painter.drawPolygon(polygon, first, 200, 0, 1, 1, 1, 1, 1, 1);
        });
        for (const int x : {5, 105, 205}) {
            EXPECT_TRUE(picture.at(x, 5).isNear({200, byte, 100})) << x << picture.at(x, 5);
        }
    }
    // The program stays for the frames to come; the second texture goes with its frame.
    EXPECT_TRUE(painted(first).isNear({200, 255, 0})) << painted(first);
    drawer.setShaderParam(0, 0.5f);
    EXPECT_TRUE(painted(first).isNear({200, 7, 9})) << "the fixed pipeline again";
}

TEST_F(Shaders, FilesThatCannotBeReadOrCompiledDoNoHarm) {
    const std::uint32_t texture = plain(red);
    const std::string broken = writeFile("broken", "void main() {");
    const std::pair<std::string, std::string> files[] = {
        {"", ""}, {folder + "/missing", folder}, {broken, broken}};
    for (const auto& [vertex, fragment] : files) {
        window->drawer().setShaderParam(makeProgram(vertex, fragment), 1);
        painted(texture); // whatever the driver makes of it
        window->drawer().setShaderParam(0, 1);
        EXPECT_EQ(painted(texture), red) << vertex;
    }
}

TEST_F(Shaders, TheDrawerTellsWhatItCanDo) {
    OpenGLDrawer& drawer = window->drawer();
    EXPECT_TRUE(drawer.shadersAvailable());
    testing::internal::CaptureStdout();
    EXPECT_TRUE(drawer.canSupport(0) && drawer.canSupport(1));
    for (const int unknown : {2, -1}) EXPECT_FALSE(drawer.canSupport(unknown));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "canSupport(Shaders) => 1\ncanSupport(FrameBuffer) => 1\n");
}
