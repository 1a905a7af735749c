// SPDX-License-Identifier: Zlib
// Clouds, star trail, vortex and the runner's sprite: the textures they make and what they ask of
// the drawer, pinned as fingerprints. A change here changes the picture of the game.
#include <map>
#include <utility>

#include "base/Noise.h"
#include "game/CloudField.h"
#include "game/Player.h"
#include "game/StarTrail.h"
#include "game/TimeVortex.h"
#include "tests/support/Fingerprint.h"
#include "tests/support/GlWindow.h"
#include "tools/Inspector.h"

// Records the textures made and the sprites drawn, and paints nothing.
class SpriteRecorder : public OpenGLDrawer {
public:
    using OpenGLDrawer::OpenGLDrawer;

    std::uint32_t createTexture(PixelBuffer pixels, std::uint32_t imageWidth,
                                std::uint32_t imageHeight) override {
        Fingerprint picture;
        for (std::uint32_t i = 0; i < imageWidth * imageHeight * 4; ++i) {
            picture.add(std::uint32_t{pixels[i]});
        }
        const std::uint32_t handle =
            OpenGLDrawer::createTexture(std::move(pixels), imageWidth, imageHeight);
        GLint filter = 0;
        glBindTexture(GL_TEXTURE_2D, textureRecord(handle)->name);
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &filter);
        glBindTexture(GL_TEXTURE_2D, 0);
        picture.add(static_cast<std::uint32_t>(filter));
        pictures[handle] = static_cast<std::uint32_t>(picture.value());
        record(handle, {});
        return handle;
    }
    void drawTexture(std::uint32_t handle, float x, float y, float scaleX, float scaleY, float r,
                     float g, float b, float a) override {
        record(handle, {x, y, scaleX, scaleY, r, g, b, a});
    }
    void drawTextureRotated(std::uint32_t handle, float x, float y, float angle, float pivotX,
                            float pivotY, float scaleX, float scaleY, float r, float g, float b,
                            float a) override {
        record(handle, {x, y, angle, pivotX, pivotY, scaleX, scaleY, r, g, b, a});
    }

    Fingerprint fingerprint;

private:
    void record(std::uint32_t handle, std::initializer_list<float> numbers) {
        fingerprint.add(pictures.at(handle));
        for (const float number : numbers) fingerprint.add(number);
    }

    std::map<std::uint32_t, std::uint32_t> pictures; // pixels and filter, by handle
};

static GlWindow* const window = GlWindow::open<SpriteRecorder>();

static SpriteRecorder& recorder() {
    return static_cast<SpriteRecorder&>(window->drawer());
}

// Of all textures and sprites since the last call, and of one more texture, which must be smooth.
static std::uint64_t fingerprint() {
    recorder().createTexture(makePixels(1, 1, [](int, int) { return white; }), 1, 1);
    return std::exchange(recorder().fingerprint, Fingerprint()).value();
}

TEST(Effects, CloudsDriftAndScrollWithTheCamera) {
    noiseSeed() = 5000;
    CloudField field, other;
    EXPECT_EQ(noiseSeed(), 5000u + 2 * 384);
    // Long enough for clouds to turn at both edges in view.
    for (int i = 0; i < 8000; ++i) {
        const auto step = static_cast<float>(i);
        field.draw(recorder(), {(step - 4000) * 0.3f, (step - 4000) * 0.2f});
    }
    other.draw(recorder(), {0, 0}); // makes no texture
    EXPECT_EQ(fingerprint(), 13565927210935014185u);
}

TEST(Effects, StarsAreLaidOncePerDrawingAndShrinkAway) {
    StarTrail trail, other;
    noiseSeed() = 1;
    for (int i = 0; i < 1060; ++i) {
        const auto step = static_cast<float>(i);
        if (i < 1000) {
            trail.spawn({70 + step * 0.3f, 80});
            trail.spawn({0, 0}); // too soon
        }
        trail.draw(recorder(), {71.5f + step * 0.3f, 78.5f});
    }
    EXPECT_EQ(noiseSeed(), 6001u);
    other.draw(recorder(), {0, 0});
    EXPECT_EQ(fingerprint(), 15079281206817108049u);
}

TEST(Effects, TheVortexGrowsWithoutEndOrShrinksFromTwoToNothing) {
    TimeVortex growing(false), shrinking(true);
    for (int drawing = 0; drawing < 200; ++drawing) {
        growing.draw(recorder());
        shrinking.draw(recorder());
    }
    EXPECT_EQ(shrinking.getSize(), 0);
    EXPECT_EQ(fingerprint(), 2134353271872679228u);
}

TEST(Effects, TheRunnersSpriteFollowsItsMotionAndStepsEveryFourthDrawing) {
    for (const auto& [vx, airborne] :
         {std::pair(0.3f, false), {-0.01f, false}, {0, true}, {1, true}, {0, false}}) {
        Player player({});
        Inspector::setMotion(player, {5, 5, vx, 0, false, airborne, vx >= 0});
        for (int drawing = 0; drawing < 60; ++drawing) player.draw(recorder());
    }
    Player player({});
    player.startWarp(); // spins away without end
    for (int drawing = 0; drawing < 250; ++drawing) player.draw(recorder());
    EXPECT_EQ(fingerprint(), 14753303539201974765u);
}
