// SPDX-License-Identifier: Zlib
#include "game/StarTrail.h"

#include "base/EnvelopeShape.h"
#include "base/Noise.h"
#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "images/EmbeddedImages.h"

static constexpr float shrinkStep = 0.075f; // of size, per drawing
static constexpr float pivot = 8;           // the middle of the picture, in its pixels

static std::uint32_t starTexture = 0; // made by the first drawing of the process

static float randomBit() {
    return noiseUnit() > 0.5f ? 1.0f : 0.0f;
}

void StarTrail::spawn(WorldPoint position) {
    if (cooldown != 0) return;
    Star& star = stars[static_cast<std::size_t>(next)];
    star.x = position.x;
    star.y = position.y;
    star.size = noiseUnit() * 3 + 1;
    star.red = randomBit();
    star.green = randomBit();
    star.blue = randomBit();
    star.angle = noiseUnit() * 360;
    star.spin = 2 * noiseUnit() - 1;
    next = (next + 1) % static_cast<int>(stars.size());
    cooldown = 1;
}

void StarTrail::draw(Drawer& drawer, WorldPoint camera) {
    if (starTexture == 0) {
        starTexture = createHardSpriteTexture(static_cast<OpenGLDrawer&>(drawer), spriteStar);
    }
    const float originX = camera.x - cameraColumns;
    const float originY = camera.y - cameraRows;
    for (Star& star : stars) {
        if (star.size <= 0) continue;
        const float screenX = (star.x - originX) * tileUnits;
        const float screenY = (star.y - originY) * tileUnits;
        // The picture lies to the right of and below the star's position, so the largest stars
        // cover the middle of the runner's tile.
        drawer.drawTextureRotated(starTexture, screenX - star.size * 0.5f,
                                  screenY - star.size * 0.5f, star.angle, pivot, pivot, star.size,
                                  star.size, star.red, star.green, star.blue, star.alpha());
        star.age();
    }
    if (cooldown != 0) --cooldown;
}

float StarTrail::Star::alpha() const {
    return size >= 1 ? 1 : envelopeShape(size, earlyRise);
}

void StarTrail::Star::age() {
    size -= shrinkStep;
    angle += spin;
    if (angle > 360) {
        angle -= 360;
    } else if (angle < 0) {
        angle += 360;
    }
}
