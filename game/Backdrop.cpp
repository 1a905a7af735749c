// SPDX-License-Identifier: Zlib
#include "game/Backdrop.h"

#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "images/EmbeddedImages.h"

static constexpr float skyScale = 1.25f; // 1024 pixels to the width of the screen

static std::uint32_t skyTexture = 0; // only where there is no copy of a backdrop

static void paintGradient(Drawer& drawer, Backdrop backdrop) {
    const std::int16_t w = drawer.width;
    const std::int16_t h = drawer.height;
    switch (backdrop) {
    case Backdrop::night:
        drawer.fillRect(0, 0, 1280, 480, 0, 0, 0, 255);
        // Most of the gradient lies below the screen, so that the screen stays nearly black.
        drawer.fillGradient(0, 480, 1280, 1280, 0, 0, 0, 255, 64, 64, 64, 255);
        break;
    case Backdrop::dawn:
        drawer.fillGradient(0, 0, w, h, 112, 96, 128, 255, 255, 255, 255, 255);
        break;
    case Backdrop::day:
        drawer.fillGradient(0, 0, w, h, 96, 96, 255, 255, 255, 255, 255, 255);
        break;
    }
}

void drawBackdrop(Drawer& drawer, Backdrop backdrop, float hiddenWidth) {
    auto& painter = static_cast<OpenGLDrawer&>(drawer);
    const bool copied = painter.drawBackground(static_cast<int>(backdrop), hiddenWidth, [&] {
        if (skyTexture == 0) skyTexture = createSpriteTexture(drawer, spriteSky);
        paintGradient(drawer, backdrop);
        drawer.setBlendMode(1);
        drawer.drawTexture(skyTexture, 0, 0, skyScale, skyScale, 1, 1, 1, 0.5f);
        drawer.setBlendMode(0);
    });
    if (!copied || skyTexture == 0) return;
    drawer.deleteTexture(skyTexture); // 4 MB
    skyTexture = 0;
}
