// SPDX-License-Identifier: Zlib
#include "game/CloudField.h"

#include <algorithm>

#include "base/Noise.h"
#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "images/EmbeddedImages.h"

static constexpr float fieldSize = 64;       // field units, width and height
static constexpr float scrollRate = 0.0625f; // field units per tile of camera movement
static constexpr float scrollStartX = 24;    // field units of camera movement before it scrolls
static constexpr float scrollStartY = 16;
static constexpr float windowWidth = 48; // field units; the screen shows the first 16 by 16
static constexpr float windowHeight = 32;
static constexpr float unitsX = 80; // units of the virtual screen per field unit
static constexpr float unitsY = 45;
static constexpr float pictureWidth = 132; // units
static constexpr float pictureHeight = 68;
static constexpr float driftStep = 0.001f; // field units per drawing

static std::uint32_t cloudTexture = 0; // made by the first drawing of the process

CloudField::CloudField() {
    for (Cloud& cloud : clouds) {
        cloud.x = noiseUnit() * fieldSize;
        cloud.y = noiseUnit() * fieldSize;
        cloud.driftingRight = noiseUnit() > 0.5f;
    }
}

void CloudField::draw(Drawer& drawer, WorldPoint camera) {
    if (cloudTexture == 0) {
        cloudTexture = createHardSpriteTexture(static_cast<OpenGLDrawer&>(drawer), spriteCloud);
    }
    const float viewX = std::max(camera.x * scrollRate - scrollStartX, 0.0f);
    const float viewY = std::max(camera.y * scrollRate - scrollStartY, 0.0f);
    for (Cloud& cloud : clouds) {
        const bool seen = viewX < cloud.x && cloud.x < viewX + windowWidth && viewY < cloud.y &&
                          cloud.y < viewY + windowHeight;
        if (seen) {
            drawer.drawTexture(cloudTexture, (cloud.x - viewX) * unitsX - pictureWidth,
                               (cloud.y - viewY) * unitsY - pictureHeight, 1, 1, 1, 1, 1, 1);
        }
        cloud.drift();
    }
}

void CloudField::Cloud::drift() {
    if (driftingRight) {
        x += driftStep;
        if (x > fieldSize) driftingRight = false;
    } else {
        x -= driftStep;
        if (x < 0) driftingRight = true;
    }
}
