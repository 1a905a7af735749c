// SPDX-License-Identifier: Zlib
#include "game/Backdrop.h"

#include "drawing/OpenGLDrawer.h"

static constexpr float skyScale = 1.25f; // 1024 pixels to the width of the screen

void drawSky(Drawer& drawer, std::uint32_t skyTexture) {
    drawer.setBlendMode(1);
    drawer.drawTexture(skyTexture, 0, 0, skyScale, skyScale, 1, 1, 1, 0.5f);
    drawer.setBlendMode(0);
}

static void paint(Drawer& drawer, std::uint32_t skyTexture, std::uint8_t red, std::uint8_t green,
                  std::uint8_t blue) {
    drawer.fillGradient(0, 0, drawer.width, drawer.height, red, green, blue, 255, 255, 255, 255,
                        255);
    drawSky(drawer, skyTexture);
}

void drawBackdrop(Drawer& drawer, std::uint32_t skyTexture, std::uint8_t red, std::uint8_t green,
                  std::uint8_t blue, float hiddenWidth) {
    if (hiddenWidth <= 0) {
        paint(drawer, skyTexture, red, green, blue);
        return;
    }
    // The whole quads, clipped to a strip on each side, so that the pixels stay the same.
    auto& painter = static_cast<OpenGLDrawer&>(drawer);
    const float strip = (drawer.width - hiddenWidth) / 2;
    if (strip <= 0) return;
    for (const float left : {0.0f, drawer.width - strip}) {
        painter.clip(left, 0, strip, drawer.height);
        paint(drawer, skyTexture, red, green, blue);
    }
    painter.stopClipping();
}
