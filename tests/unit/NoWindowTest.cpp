// SPDX-License-Identifier: Zlib
// The drawer where no window can be opened: it asks the program to quit, and what the game
// calls later is safe. Under the address sanitizer this also proves that the pixels it is given are
// freed.
#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "drawing/OpenGLDrawer.h"

static PixelBuffer pixels() {
    return std::make_unique<std::uint8_t[]>(3 * 3 * 4);
}

TEST(NoWindow, AsksToQuitAndEveryLaterOperationIsSafe) {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    OpenGLDrawer drawer(1280, 720);
    EXPECT_EQ(drawer.createTexture(pixels(), 3, 3), 0u) << "before createWindow already";
    EXPECT_FALSE(drawer.createWindow(1280, 720, false, 0));
    SDL_Event event = {};
    EXPECT_EQ(SDL_PollEvent(&event), 1);
    EXPECT_EQ(event.type, SDL_QUIT);
    EXPECT_EQ(SDL_PollEvent(&event), 0);

    EXPECT_EQ(drawer.createTexture(pixels(), 3, 3), 0u);
    drawer.deleteTexture(1);
    EXPECT_EQ(drawer.createFont("MarsNeedsCunnilingus.ttf", 64), 0);
    drawer.setGlyphImage(0, pixels(), 3);
    drawer.beginFrame();
    drawer.setBlendMode(1);
    drawer.drawTexture(1, 0, 0, 1, 1, 1, 1, 1, 1);
    drawer.drawTextureRotated(1, 0, 0, 30, 4, 4, 1, 1, 1, 1, 1, 1);
    for (const int font : {0, 1}) drawer.drawText("Speed:", font, 0, 0, 100, 1, 1, 1, 1, 1);
    drawer.drawLine(0, 0, 9, 9, 1, 1, 1, 1);
    drawer.fillRect(0, 0, 9, 9, 1, 2, 3, 4);
    drawer.drawBackground(0, 0, [] { FAIL(); });
    drawer.endFrame();
    SDL_Quit();
}
