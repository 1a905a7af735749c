// SPDX-License-Identifier: Zlib
// The drawer where no window can be opened: it asks the program to end, and does nothing from then
// on, whatever is called. What it says then no_display reads. Under the address sanitizer this also
// proves that the pixels it is given are freed.
#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "drawing/OpenGLDrawer.h"

class NoWindow : public testing::Test {
protected:
    void SetUp() override {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    }
    void TearDown() override { SDL_Quit(); }

    static PixelBuffer pixels() { return std::make_unique<std::uint8_t[]>(3 * 3 * 4); }
};

TEST_F(NoWindow, AsksForTheEndAndEveryLaterOperationIsSafeAndGivesNothing) {
    OpenGLDrawer drawer(1280, 720);
    EXPECT_EQ(drawer.createTexture(pixels(), 3, 3), 0u) << "before createWindow already";
    EXPECT_FALSE(drawer.createWindow(1280, 720, false, 0));
    SDL_Event event = {};
    EXPECT_EQ(SDL_PollEvent(&event), 1);
    EXPECT_EQ(event.type, SDL_QUIT);
    EXPECT_EQ(SDL_PollEvent(&event), 0);

    drawer.resizeWindow(1024, 768);
    EXPECT_EQ(drawer.createTexture(pixels(), 3, 3), 0u);
    drawer.deleteTexture(1);
    const float points[] = {0, 0, 9, 0, 0, 9};
    EXPECT_EQ(drawer.createPolygon(points, 3), 0);
    EXPECT_EQ(drawer.createShader("vertex", "fragment"), 0u);
    EXPECT_EQ(drawer.createFont("MarsNeedsCunnilingus.ttf", 64), 0);
    drawer.beginFrame();
    drawer.setShaderParam(0, 1);
    drawer.setSecondTexture(3);
    for (int mode = 0; mode < 4; ++mode) drawer.setBlendMode(mode);
    for (const std::uint32_t handle : {0u, 1u, 2u, 3u}) {
        drawer.drawTexture(handle, 0, 0, 1, 1, 1, 1, 1, 1);
        drawer.drawTextureRotated(handle, 0, 0, 30, 4, 4, 1, 1, 1, 1, 1, 1);
        drawer.drawTextureRegion(handle, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1);
        drawer.drawPolygon(0, handle, 0, 0, 1, 1, 1, 1, 1, 1);
        EXPECT_EQ(drawer.textureRecord(handle), nullptr);
    }
    for (const std::int32_t font : {-1, 0, 1}) {
        drawer.drawText("Speed:", font, 0, 0, 100, 1, 1, 1, 1, 1);
    }
    drawer.drawGlyphText("GO!", 0, 0, 32, 1, 1, 1, 1);
    drawer.drawLine(0, 0, 9, 9, 1, 1, 1, 1);
    drawer.fillRect(0, 0, 9, 9, 1, 2, 3, 4);
    drawer.fillGradient(0, 0, 9, 9, 1, 2, 3, 4, 5, 6, 7, 8);
    drawer.drawTileQuad(0, 0, 0, 0, 0.123f, 0.123f, 4, 4, 1, 1, 1, 1);
    drawer.translate(1, 2);
    drawer.setViewport(0, 0, 100, 100);
    drawer.resetViewport();
    drawer.beginOffscreen();
    drawer.endOffscreen();
    drawer.setTextureFiltering(false);
    drawer.setGlyphImage(0, pixels(), 3);
    drawer.setGlyphImage(99, pixels(), 3);
    drawer.endFrame();
    EXPECT_EQ(drawer.offscreenTexture(), 0u);
    EXPECT_FALSE(drawer.canSupport(0));
    drawer.canSupport(1); // says yes whatever happens
    EXPECT_FALSE(drawer.canSupport(2));
    drawer.shadersAvailable();
    EXPECT_GE(drawer.viewportWidth() + drawer.viewportHeight(), 0);
    EXPECT_EQ(drawer.viewportX() + drawer.viewportY(), 0);
    const auto screen = drawer.readScreen();
    ASSERT_NE(screen, nullptr);
    EXPECT_EQ(screen[1024 * 768 * 3 - 1], 0) << "as large as the window would be";
}
