// SPDX-License-Identifier: Zlib
#include "tests/support/LiteralPlay.h"

#include "drawing/OpenGLDrawer.h"
#include "drawing/SpriteTexture.h"
#include "images/EmbeddedImages.h"

static std::uint32_t sky = 0;
static std::int32_t font = 0;
static std::array<std::uint32_t, 4> rings;

static void load(OpenGLDrawer& drawer) {
    sky = createSpriteTexture(drawer, spriteSky);
    font = drawer.createFont("MarsNeedsCunnilingus.ttf", 64);
    for (std::size_t i = 0; i < rings.size(); ++i) {
        rings[i] = createHardSpriteTexture(drawer, spriteRing + i);
    }
}

void LiteralPlay::draw(OpenGLDrawer& drawer) {
    if (sky == 0) load(drawer);
    if (!finished) {
        player.update(held, map);
        if (player.isAirborne()) trail.spawn(player.position());
        if (player.kickSpeed() >= 1.5f) {
            finished = true;
            player.startWarp();
        }
    }
    drawWorld(drawer);
    drawSpeed(drawer);
    if (finished) drawVortex(drawer);
}

void LiteralPlay::drawWorld(OpenGLDrawer& drawer) {
    const WorldPoint camera = cameraFor(player.position());
    drawer.fillGradient(0, 0, 1280, 720, 112, 96, 128, 255, 255, 255, 255, 255);
    drawer.setBlendMode(1);
    drawer.drawTexture(sky, 0, 0, 1.25f, 1.25f, 1, 1, 1, 0.5f);
    drawer.setBlendMode(0);
    clouds.draw(drawer, camera);
    tiles.draw(drawer, map, camera);
    trail.draw(drawer, camera);
    player.draw(drawer);
}

void LiteralPlay::drawSpeed(OpenGLDrawer& drawer) const {
    drawer.drawText("Speed:", font, 384, 40, 1024, 1, 1, 1, 1, 1);
    drawer.drawText("88mph", font, 1024, 112, 512, 1, 1, 1, 1, 1);
    drawer.fillRect(640, 32, 608, 64, 255, 255, 255, 255);
    drawer.fillRect(644, 36, 600, 56, 0, 0, 0, 255);
    drawer.fillRect(648, 40, player.kickSpeed() * 300, 48, 255, 0, 0, 255);
    drawer.fillRect(1098, 28, 8, 72, 255, 255, 255, 255);
}

void LiteralPlay::drawVortex(OpenGLDrawer& drawer) {
    static constexpr float colours[6][3] = {{1, 0, 0}, {0, 0.75f, 0}, {1, 0.5f, 0},
                                            {0, 0, 1}, {1, 1, 0},     {1, 0, 1}};
    const float scale = vortexSize * 200;
    const auto angle = static_cast<float>(vortexDrawings * 4 % 360);
    for (std::size_t i = 0; i < rings.size(); ++i) {
        const float* colour = colours[(vortexDrawings / 8 + i) % 6];
        drawer.drawTextureRotated(rings[i], 640 - scale * 4, 360 - scale * 4, angle, 4, 4, scale,
                                  scale, colour[0], colour[1], colour[2], 1);
    }
    vortexSize += 0.005f;
    ++vortexDrawings;
}
