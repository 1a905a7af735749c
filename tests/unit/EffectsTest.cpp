// SPDX-License-Identifier: Zlib
// Clouds, star trail, vortex and the runner's sprite: what they ask of the drawer, pinned as
// fingerprints. A change here changes the picture of the game.
#include <algorithm>
#include <map>

#include "base/Noise.h"
#include "drawing/ImageLoader.h"
#include "game/CloudField.h"
#include "game/Player.h"
#include "game/StarTrail.h"
#include "game/TimeVortex.h"
#include "images/EmbeddedImages.h"
#include "tests/support/Fingerprint.h"
#include "tests/support/GlWindow.h"
#include "tools/Inspector.h"

// Records the textures made and the sprites drawn, and paints nothing.
class SpriteRecorder : public OpenGLDrawer {
public:
    using OpenGLDrawer::OpenGLDrawer;

    std::uint32_t createTexture(PixelBuffer pixels, std::uint32_t imageWidth,
                                std::uint32_t imageHeight) override {
        const int sprite = spriteOf(pixels.get(), imageWidth * imageHeight * 4);
        made.push_back(OpenGLDrawer::createTexture(std::move(pixels), imageWidth, imageHeight));
        pictures[made.back()] = sprite;
        return made.back();
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

    std::vector<std::uint32_t> made;
    std::vector<int> drawn;  // entries of spriteImages; -1 for a picture that is made from several
    Fingerprint fingerprint; // of the sprites drawn, with all numbers

private:
    static int spriteOf(const std::uint8_t* pixels, std::size_t bytes) {
        for (int i = 0; i < spriteImageCount; ++i) {
            const LoadedImage image =
                ImageLoader().loadFromMemory(spriteImages[i].data, spriteImages[i].bytes);
            if (image.width * image.height * 4 == bytes &&
                std::equal(pixels, pixels + bytes, image.pixels.get())) {
                return i;
            }
        }
        return -1;
    }
    void record(std::uint32_t handle, std::initializer_list<float> numbers) {
        drawn.push_back(pictures.at(handle));
        fingerprint.add(static_cast<std::uint32_t>(drawn.back()));
        for (const float number : numbers) fingerprint.add(number);
    }

    std::map<std::uint32_t, int> pictures; // entry of spriteImages by handle
};

static GlWindow* const window = GlWindow::open<SpriteRecorder>();

static SpriteRecorder& recorder() {
    return static_cast<SpriteRecorder&>(window->drawer());
}

class Effects : public testing::Test {
protected:
    // Entries of the sprites that one drawing asks for.
    template <typename Effect, typename... Camera>
    static std::vector<int> spritesOf(Effect& effect, Camera... camera) {
        recorder().drawn.clear();
        effect.draw(recorder(), camera...);
        return recorder().drawn;
    }

    // Two objects of an effect share `count` textures with hard pixels; later textures are smooth.
    // The fingerprint starts again.
    template <typename Effect, typename... Camera>
    static void expectTextures(std::size_t count, Effect first, Effect second, Camera... camera) {
        recorder().made.clear();
        spritesOf(first, camera...);
        spritesOf(second, camera...);
        EXPECT_EQ(recorder().made.size(), count);
        window->makeTexture(1, 1, [](int, int) { return white; });
        for (const std::uint32_t handle : recorder().made) {
            GLint filter = 0;
            glBindTexture(GL_TEXTURE_2D, recorder().textureRecord(handle)->name);
            glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &filter);
            glBindTexture(GL_TEXTURE_2D, 0);
            EXPECT_EQ(filter, handle == recorder().made.back() ? GL_LINEAR : GL_NEAREST);
        }
        recorder().fingerprint = {};
    }
};

TEST_F(Effects, CloudsDriftAndScrollWithTheCamera) {
    expectTextures(1, CloudField(), CloudField(), WorldPoint{0, 0});
    noiseSeed() = 5000;
    CloudField field;
    EXPECT_EQ(noiseSeed(), 5000u + 384);
    // Long enough for clouds to turn at both edges in view.
    for (int i = 0; i < 8000; ++i) {
        const auto step = static_cast<float>(i);
        spritesOf(field, WorldPoint{(step - 4000) * 0.3f, (step - 4000) * 0.2f});
    }
    EXPECT_EQ(recorder().fingerprint.value(), 8955472531023274561u);
}

TEST_F(Effects, StarsAreLaidOncePerDrawingAndShrinkAway) {
    expectTextures(1, StarTrail(), StarTrail(), WorldPoint{0, 0}); // even without a star
    StarTrail trail;
    noiseSeed() = 1;
    for (int i = 0; i < 1000; ++i) {
        const auto step = static_cast<float>(i);
        trail.spawn({70 + step * 0.3f, 80});
        trail.spawn({0, 0}); // too soon
        EXPECT_EQ(noiseSeed(), 1u + 6u * static_cast<unsigned>(i + 1));
        EXPECT_LE(spritesOf(trail, WorldPoint{71.5f + step * 0.3f, 78.5f}).size(), 54u);
    }
    EXPECT_EQ(recorder().fingerprint.value(), 11437229525910729354u);
    int drawings = 0;
    while (!spritesOf(trail, WorldPoint{0, 0}).empty()) ++drawings;
    EXPECT_LE(drawings, 53);
}

// PlayPictureTest sees it grow.
TEST_F(Effects, TheVortexShrinksFromTwoToNothingIn41DrawingsAndStaysThere) {
    expectTextures(6, TimeVortex(false), TimeVortex(true));
    TimeVortex vortex(true);
    EXPECT_EQ(vortex.getSize(), 2);
    int drawings = 0;
    for (; vortex.getSize() > 0 && drawings < 100; ++drawings) spritesOf(vortex);
    EXPECT_EQ(drawings, 41);
    spritesOf(vortex);
    EXPECT_EQ(vortex.getSize(), 0);
}

static Player playerIn(float vx, bool airborne, bool facingRight) {
    Player player({});
    Inspector::setMotion(player, {5, 5, vx, 0, false, airborne, facingRight});
    return player;
}

TEST_F(Effects, TheRunnersSpriteFollowsItsMotionAndStepsEveryFourthDrawing) {
    expectTextures(12, Player({}), Player({}));
    const std::vector<int> run = {5, 6, 7, 8, 9, 10};
    const std::vector<int> air = {2, 3, 4, 3};
    const std::vector<int> stand = {11, 12, 13, 12};
    for (const auto& [vx, pictures] :
         {std::pair(0.3f, run), {-0.01f, run}, {0, air}, {1, air}, {0, stand}}) {
        Player player = playerIn(vx, pictures == air, vx >= 0);
        for (std::size_t drawing = 0; drawing < 60; ++drawing) {
            const int picture = pictures[drawing / 4 % pictures.size()];
            ASSERT_EQ(spritesOf(player), std::vector{picture}) << "drawing " << drawing;
        }
    }
    Player player = playerIn(0.5f, false, false);
    player.startWarp(); // spins away without end
    for (std::size_t drawing = 0; drawing < 250; ++drawing) {
        ASSERT_EQ(spritesOf(player), std::vector{air[drawing / 4 % 4]});
    }
    EXPECT_EQ(recorder().fingerprint.value(), 224069116940656111u);
}
