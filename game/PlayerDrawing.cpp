// SPDX-License-Identifier: Zlib
#include <array>

#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "game/Player.h"
#include "images/EmbeddedImages.h"

// Where the camera puts the runner's tile on the virtual screen, in units.
static constexpr float spriteX = 608;
static constexpr float spriteY = 480;
static constexpr float spriteSide = 64;
static constexpr float spriteScale = 2;  // 32 pixels to 64 units
static constexpr float spritePivot = 16; // the middle of the picture, in its pixels

// The final spin: warp falls from 1 by a step per drawing, without end.
static constexpr float warpTurn = 720; // degrees per unit of warp
static constexpr float warpRise = 180; // units of the screen per unit of warp
static constexpr float warpTop = 360 - 64 + 4;

static constexpr int framePeriod = 4; // drawings per picture

// Textures of the fourteen sprite slots, made by the first drawing of the process.
static constexpr std::size_t runSlot = 0;
static constexpr std::size_t airSlot = 6;
static constexpr std::size_t idleSlot = 10;
static std::array<std::uint32_t, 14> sprites;

static void loadSprites(OpenGLDrawer& drawer) {
    const auto load = [&](std::size_t firstSlot, std::size_t firstSprite, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            sprites[firstSlot + i] = createHardSpriteTexture(drawer, firstSprite + i);
        }
    };
    load(runSlot, spriteRunnerRun, 6);
    load(airSlot, spriteRunnerAir, 3);
    load(idleSlot, spriteRunnerStand, 3);
    // The fourth frame of both repeats the second.
    sprites[airSlot + 3] = sprites[airSlot + 1];
    sprites[idleSlot + 3] = sprites[idleSlot + 1];
}

void Player::draw(Drawer& drawer) {
    if (sprites[runSlot] == 0) loadSprites(static_cast<OpenGLDrawer&>(drawer));
    if (warp >= 1) {
        drawRunning(drawer);
    } else {
        drawSpinningAway(drawer);
    }
    stepAnimation();
}

void Player::drawRunning(Drawer& drawer) const {
    std::size_t slot = runSlot + static_cast<std::size_t>(runFrame);
    if (airborne) {
        slot = airSlot + static_cast<std::size_t>(airFrame);
    } else if (vx == 0) {
        slot = idleSlot + static_cast<std::size_t>(idleFrame);
    }
    // A negative scale mirrors the picture about x, so x is then its right edge.
    const float left = facingRight ? spriteX : spriteX + spriteSide;
    const float scaleX = facingRight ? spriteScale : -spriteScale;
    drawer.drawTexture(sprites[slot], left, spriteY, scaleX, spriteScale, 1, 1, 1, 1);
}

void Player::drawSpinningAway(Drawer& drawer) {
    drawer.drawTextureRotated(sprites[airSlot + static_cast<std::size_t>(airFrame)], spriteX,
                              warp * warpRise + warpTop, warp * warpTurn, spritePivot, spritePivot,
                              spriteScale, spriteScale, 1, 1, 1, 1);
    warp -= warpStep;
}

void Player::stepAnimation() {
    if (--frameCountdown > 0) return;
    frameCountdown = framePeriod;
    runFrame = (runFrame + 1) % 6;
    airFrame = (airFrame + 1) % 4;
    idleFrame = (idleFrame + 1) % 4;
}
