// SPDX-License-Identifier: Zlib
#include "game/TimeVortex.h"

#include <algorithm>

#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "images/EmbeddedImages.h"

static constexpr float fullScale = 200;   // units a pixel of the rings at size 1
static constexpr float ringCentre = 4;    // middle of the ring pictures, in their pixels
static constexpr float growStep = 0.005f; // of size, a drawing
static constexpr float shrinkStep = 0.05f;
static constexpr float reverseStart = 2;
static constexpr float turnStep = 4;   // degrees a drawing
static constexpr int colourPeriod = 8; // drawings a phase

static std::array<std::uint32_t, 4> ringTextures; // made by the first drawing of the process

static void loadTextures(OpenGLDrawer& drawer) {
    drawer.setTextureFiltering(false);
    for (std::size_t i = 0; i < ringTextures.size(); ++i) {
        ringTextures[i] = createSpriteTexture(drawer, spriteRing + i);
    }
    drawer.setTextureFiltering(true);
}

TimeVortex::TimeVortex(bool shrinking) : size(shrinking ? reverseStart : 0), reverse(shrinking) {}

void TimeVortex::draw(Drawer& drawer) {
    if (ringTextures[0] == 0) loadTextures(static_cast<OpenGLDrawer&>(drawer));
    const float scale = size * fullScale;
    const float x = static_cast<float>(drawer.width) / 2 - scale * ringCentre;
    const float y = static_cast<float>(drawer.height) / 2 - scale * ringCentre;
    for (std::size_t i = 0; i < ringTextures.size(); ++i) {
        const auto phase = static_cast<std::size_t>(colourPhase) + i;
        const Colour& colour = colours[phase % colours.size()];
        drawer.drawTextureRotated(ringTextures[i], x, y, rotation, ringCentre, ringCentre, scale,
                                  scale, colour.red, colour.green, colour.blue, 1);
    }
    step();
}

void TimeVortex::step() {
    size = reverse ? std::max(size - shrinkStep, 0.0f) : size + growStep;
    rotation += turnStep;
    if (rotation > 360) rotation -= 360;
    if (--colourCountdown == 0) {
        colourCountdown = colourPeriod;
        colourPhase = (colourPhase + 1) % static_cast<int>(colours.size());
    }
}
