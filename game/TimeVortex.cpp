// SPDX-License-Identifier: Zlib
#include "game/TimeVortex.h"

#include <algorithm>
#include <cmath>

#include "drawing/ImageLoader.h"
#include "drawing/OpenGLDrawer.h"
#include "images/EmbeddedImages.h"

static constexpr float fullScale = 200; // units per pixel of the rings at size 1
static constexpr std::size_t ringCount = 4;
static constexpr std::uint32_t ringSide = 8; // pixels of each ring's picture
static constexpr float ringCentre = 4;       // the middle, in pixels
static constexpr float growStep = 0.005f;    // of size, per drawing
static constexpr float shrinkStep = 0.05f;
static constexpr float reverseStart = 2;
static constexpr float turnStep = 4;   // degrees per drawing
static constexpr int colourPeriod = 8; // drawings per phase

// Each picture shows all four rings in one phase of the colours, made by the first drawing of the
// process. Drawing the rings one by one would give the same pixels at four times the cost.
static std::array<std::uint32_t, 6> ringTextures;

static std::uint8_t toByte(float level) {
    return static_cast<std::uint8_t>(std::lround(level * 255));
}

// Paints a ring over a picture of the same size. Its pixels are opaque or clear.
void TimeVortex::paintRing(const LoadedImage& ring, const Colour& colour, PixelBuffer& picture) {
    if (ring.width != ringSide || ring.height != ringSide) return;
    const std::uint8_t* source = ring.pixels.get();
    std::uint8_t* target = picture.get();
    for (std::uint32_t i = 0; i < ringSide * ringSide; ++i, source += 4, target += 4) {
        if (source[3] == 0) continue;
        target[0] = toByte(colour.red);
        target[1] = toByte(colour.green);
        target[2] = toByte(colour.blue);
        target[3] = 255;
    }
}

void TimeVortex::loadTextures(OpenGLDrawer& drawer) {
    std::array<LoadedImage, ringCount> rings;
    for (std::size_t i = 0; i < ringCount; ++i) {
        const EmbeddedImage& file = spriteImages[spriteRing + i];
        rings[i] = ImageLoader().loadFromMemory(file.data, file.bytes);
    }
    drawer.setTextureFiltering(false);
    for (std::size_t phase = 0; phase < colours.size(); ++phase) {
        PixelBuffer picture = std::make_unique<std::uint8_t[]>(ringSide * ringSide * 4);
        for (std::size_t i = 0; i < ringCount; ++i) {
            paintRing(rings[i], colours[(phase + i) % colours.size()], picture);
        }
        ringTextures[phase] = drawer.createTexture(std::move(picture), ringSide, ringSide);
    }
    drawer.setTextureFiltering(true);
}

TimeVortex::TimeVortex(bool shrinking) : size(shrinking ? reverseStart : 0), reverse(shrinking) {}

void TimeVortex::draw(Drawer& drawer) {
    auto& painter = static_cast<OpenGLDrawer&>(drawer);
    if (ringTextures[0] == 0) loadTextures(painter);
    const float scale = size * fullScale;
    const float x = static_cast<float>(drawer.width) / 2 - scale * ringCentre;
    const float y = static_cast<float>(drawer.height) / 2 - scale * ringCentre;
    painter.setUntinted(true);
    drawer.drawTextureRotated(ringTextures[static_cast<std::size_t>(colourPhase)], x, y, rotation,
                              ringCentre, ringCentre, scale, scale, 1, 1, 1, 1);
    painter.setUntinted(false);
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
