// SPDX-License-Identifier: Zlib
#include "game/Backdrop.h"

#include <utility>

#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "images/EmbeddedImages.h"

static constexpr float skyScale = 1.25f; // 1024 pixels to the width of the screen

// Deleted once the drawer has a copy of the backdrop.
static std::uint32_t skyTexture = 0;
static std::uint32_t logoTexture = 0;

static void paintGradient(Drawer& drawer, Backdrop backdrop) {
    const std::int16_t w = drawer.width;
    const std::int16_t h = drawer.height;
    switch (backdrop) {
    case Backdrop::night:
    case Backdrop::logo:
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

static void paint(Drawer& drawer, Backdrop backdrop) {
    if (skyTexture == 0) skyTexture = createSpriteTexture(drawer, spriteSky);
    paintGradient(drawer, backdrop);
    drawer.setBlendMode(1);
    drawer.drawTexture(skyTexture, 0, 0, skyScale, skyScale, 1, 1, 1, 0.5f);
    drawer.setBlendMode(0);
    if (backdrop != Backdrop::logo) return;
    if (logoTexture == 0) logoTexture = createSpriteTexture(drawer, spriteLogo);
    drawer.drawTexture(logoTexture, 128, 0, 1, 1, 1, 1, 1, 1);
}

void drawBackdrop(Drawer& drawer, Backdrop backdrop) {
    auto& painter = static_cast<OpenGLDrawer&>(drawer);
    const bool copied =
        painter.drawBackground(static_cast<int>(backdrop), [&] { paint(drawer, backdrop); });
    if (!copied) return;
    for (std::uint32_t* texture : {&skyTexture, &logoTexture}) { // 4 MB each
        if (*texture != 0) drawer.deleteTexture(std::exchange(*texture, 0));
    }
}
