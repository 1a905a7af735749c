// SPDX-License-Identifier: Zlib
// Clouds, star trail, vortex and the runner's sprite: what they ask of the drawer, and where it
// counts, the pixels that come of it.
#include <algorithm>
#include <cmath>

#include "base/Noise.h"
#include "drawing/SpriteTexture.h"
#include "game/CloudField.h"
#include "game/Player.h"
#include "game/StarTrail.h"
#include "game/TimeVortex.h"
#include "images/EmbeddedImages.h"
#include "tests/support/GlWindow.h"
#include "tools/Inspector.h"

// The drawer of the game, which also writes down the textures made and the sprites drawn.
class SpriteRecorder : public OpenGLDrawer {
public:
    using OpenGLDrawer::OpenGLDrawer;

    struct Sprite {
        std::uint32_t handle;
        float x, y, scaleX, scaleY;
        std::array<float, 4> colour;
        bool turned = false;
        float angle = 0, pivotX = 0, pivotY = 0;
    };

    std::uint32_t createTexture(PixelBuffer pixels, std::uint32_t imageWidth,
                                std::uint32_t imageHeight) override {
        made.push_back(OpenGLDrawer::createTexture(std::move(pixels), imageWidth, imageHeight));
        return made.back();
    }
    void drawTexture(std::uint32_t handle, float x, float y, float scaleX, float scaleY, float r,
                     float g, float b, float a) override {
        sprites.push_back({handle, x, y, scaleX, scaleY, {r, g, b, a}});
        if (painting) OpenGLDrawer::drawTexture(handle, x, y, scaleX, scaleY, r, g, b, a);
    }
    void drawTextureRotated(std::uint32_t handle, float x, float y, float angle, float pivotX,
                            float pivotY, float scaleX, float scaleY, float r, float g, float b,
                            float a) override {
        sprites.push_back(
            {handle, x, y, scaleX, scaleY, {r, g, b, a}, true, angle, pivotX, pivotY});
        if (!painting) return;
        OpenGLDrawer::drawTextureRotated(handle, x, y, angle, pivotX, pivotY, scaleX, scaleY, r, g,
                                         b, a);
    }

    bool painting = true; // or sprites are only written down
    std::vector<std::uint32_t> made;
    std::vector<Sprite> sprites;
};

static GlWindow* const window = GlWindow::open<SpriteRecorder>();

static SpriteRecorder& recorder() {
    return static_cast<SpriteRecorder&>(window->drawer());
}

// The sprites that one drawing asks for, not painted.
template <typename Effect, typename... Camera>
static std::vector<SpriteRecorder::Sprite> spritesOf(Effect& effect, Camera... camera) {
    recorder().sprites.clear();
    recorder().painting = false;
    effect.draw(recorder(), camera...);
    recorder().painting = true;
    return recorder().sprites;
}

// The first two objects of an effect share so many textures of hard pixels, and whoever comes next
// gets smooth ones.
template <typename Effect, typename... Camera>
static void expectTextures(std::size_t count, Effect first, Effect second, Camera... camera) {
    recorder().made.clear();
    first.draw(recorder(), camera...);
    second.draw(recorder(), camera...);
    first.draw(recorder(), camera...);
    EXPECT_EQ(recorder().made.size(), count);
    window->makeTexture(1, 1, [](int, int) { return white; });
    for (const std::uint32_t handle : recorder().made) {
        GLint filter = 0;
        glBindTexture(GL_TEXTURE_2D, recorder().textureRecord(handle)->name);
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &filter);
        glBindTexture(GL_TEXTURE_2D, 0);
        EXPECT_EQ(filter, handle == recorder().made.back() ? GL_LINEAR : GL_NEAREST);
    }
}

// --- clouds

TEST(Clouds, AreLaidOutByThreeNumbersEach) {
    noiseSeed() = 5000;
    const CloudField field;
    EXPECT_EQ(noiseSeed(), 5000u + 384);
    noiseSeed() = 5000;
    for (int i = 0; i < 128; ++i) {
        const Inspector::Cloud cloud = Inspector::cloud(field, i);
        ASSERT_EQ(cloud.x, noiseUnit() * 64) << i;
        ASSERT_EQ(cloud.y, noiseUnit() * 64) << i;
        ASSERT_EQ(cloud.driftingRight, noiseUnit() > 0.5f) << i;
    }
}

// A field whose clouds but one are out of sight.
static CloudField fieldWith(const Inspector::Cloud& cloud) {
    CloudField field;
    for (int i = 0; i < 128; ++i) Inspector::setCloud(field, i, {-1, 200, true});
    Inspector::setCloud(field, 77, cloud);
    return field;
}

TEST(Clouds, ShowStrictlyInsideTheirWindow) {
    expectTextures(1, CloudField(), CloudField(), WorldPoint{0, 0});
    struct View {
        WorldPoint camera;
        float x, y; // field units
    };
    for (const View& view : {View{{0, 0}, 0, 0}, View{{384, 256}, 0, 0}, View{{-500, -500}, 0, 0},
                             View{{512, 320}, 8, 4}, View{{400, 700}, 1, 27.75f},
                             View{{61.5f, 982.5f}, 0, 45.40625f}}) {
        const auto expectSeen = [&view](float x, float y, bool seen) {
            CloudField field = fieldWith({x, y, true});
            const auto sprites = spritesOf(field, view.camera);
            ASSERT_EQ(sprites.size(), seen ? 1u : 0u) << x << ", " << y;
            if (!seen) return;
            EXPECT_FLOAT_EQ(sprites[0].x, (x - view.x) * 80 - 132);
            EXPECT_FLOAT_EQ(sprites[0].y, (y - view.y) * 45 - 68);
            EXPECT_EQ(sprites[0].scaleX, 1);
            EXPECT_EQ(sprites[0].scaleY, 1);
            EXPECT_EQ(sprites[0].colour, (std::array<float, 4>{1, 1, 1, 1}));
        };
        const float right = view.x + 48;
        const float bottom = view.y + 32;
        for (const bool seen : {false, true}) { // on the border, and next to it
            const auto inward = [seen](float border, float middle) {
                return seen ? std::nextafter(border, middle) : border;
            };
            expectSeen(inward(view.x, right), view.y + 5, seen);
            expectSeen(inward(right, view.x), view.y + 5, seen);
            expectSeen(view.x + 7, inward(view.y, bottom), seen);
            expectSeen(view.x + 7, inward(bottom, view.y), seen);
        }
    }
}

TEST(Clouds, DriftUnseenAndTurnBeyondTheEdges) {
    struct Case {
        float x;
        bool driftingRight;
        float nextX;
        bool nextDriftingRight;
    };
    const float step = 0.001f;
    for (const Case& drift :
         {Case{30, true, 30 + step, true}, Case{30, false, 30 - step, false},
          Case{64, true, 64 + step, false}, Case{64 - step, true, 64, true},
          Case{64 + step, false, 64 + step - step, false}, Case{0, false, -step, true},
          Case{step, false, 0, false}, Case{-step, true, 0, true}}) {
        CloudField field = fieldWith({drift.x, 10, drift.driftingRight});
        EXPECT_TRUE(spritesOf(field, WorldPoint{10000, 10000}).empty());
        const Inspector::Cloud next = Inspector::cloud(field, 77);
        EXPECT_EQ(next.x, drift.nextX);
        EXPECT_EQ(next.driftingRight, drift.nextDriftingRight) << "from " << drift.x;
        EXPECT_EQ(next.y, 10);
    }
}

// --- stars

TEST(Stars, AreMadeOfSixNumbersAndShrinkAway) {
    expectTextures(1, StarTrail(), StarTrail(), WorldPoint{0, 0}); // of no star at all
    int shortest = 100;
    int longest = 0;
    for (std::uint32_t seed = 0; seed < 1000; ++seed) {
        StarTrail stars;
        noiseSeed() = seed;
        stars.spawn({70, 80});
        stars.spawn({0, 0}); // too soon
        EXPECT_EQ(noiseSeed(), seed + 6);
        noiseSeed() = seed;
        float size = noiseUnit() * 3 + 1;
        std::array<float, 4> colour = {0, 0, 0, 1};
        for (std::size_t i = 0; i < 3; ++i) colour[i] = noiseUnit() > 0.5f ? 1.0f : 0.0f;
        float angle = noiseUnit() * 360;
        const float spin = 2 * noiseUnit() - 1;
        int drawings = 0;
        for (; size > 0; ++drawings) {
            const auto sprites = spritesOf(stars, WorldPoint{71.5f, 78.5f});
            ASSERT_EQ(sprites.size(), 1u);
            if (size < 1) colour[3] = size / ((size - 1) * -0.33333337f + size); // it fades
            ASSERT_EQ(sprites[0].colour, colour) << "at size " << size;
            ASSERT_EQ(sprites[0].angle, angle);
            ASSERT_EQ(sprites[0].scaleX, size);
            ASSERT_EQ(sprites[0].scaleY, size);
            ASSERT_EQ(sprites[0].pivotX, 8);
            ASSERT_EQ(sprites[0].pivotY, 8);
            // The runner's place on the screen, less half a unit for each unit of size.
            ASSERT_FLOAT_EQ(sprites[0].x, 608 - size * 0.5f);
            ASSERT_FLOAT_EQ(sprites[0].y, 480 - size * 0.5f);
            size -= 0.075f;
            angle += spin;
            angle += angle > 360 ? -360.0f : angle < 0 ? 360.0f : 0.0f;
        }
        EXPECT_TRUE(spritesOf(stars, WorldPoint{0, 0}).empty()) << "a dead star stays dead";
        shortest = std::min(shortest, drawings);
        longest = std::max(longest, drawings);
    }
    EXPECT_EQ(shortest, 14);
    EXPECT_EQ(longest, 54);
}

TEST(Stars, AreLaidEveryFrameAndDrawnInTheOrderOfTheirRing) {
    StarTrail trail;
    noiseSeed() = 1;
    for (int i = 0; i < 200; ++i) { // once round the ring and on
        trail.spawn({static_cast<float>(i), 0});
        const auto sprites = spritesOf(trail, WorldPoint{11, 6});
        const auto newest = std::count_if(sprites.begin(), sprites.end(), [i](const auto& star) {
            return star.x == static_cast<float>(i) * 64 - star.scaleX * 0.5f;
        });
        ASSERT_EQ(newest, 1) << i;
        ASSERT_LE(sprites.size(), 54u);
        const auto isLeft = [](const auto& one, const auto& other) { return one.x < other.x; };
        ASSERT_TRUE(i >= 128 || std::is_sorted(sprites.begin(), sprites.end(), isLeft))
            << "the oldest first";
    }
}

// --- vortex: the way it grows is PlayPictureTest's

TEST(Vortex, ShrinksFromTwoToNothingIn41DrawingsAndStaysThere) {
    expectTextures(6, TimeVortex(false), TimeVortex(true));
    TimeVortex vortex(true);
    EXPECT_EQ(vortex.getSize(), 2);
    int drawings = 0;
    for (; vortex.getSize() > 0 && drawings < 100; ++drawings) spritesOf(vortex);
    EXPECT_EQ(drawings, 41);
    EXPECT_TRUE(window->paint([&](OpenGLDrawer& drawer) { vortex.draw(drawer); }).isBlack());
    EXPECT_EQ(vortex.getSize(), 0);
}

TEST(Vortex, HidesTheWholeScreenInItsLastDrawing) {
    TimeVortex vortex(false);
    const auto drawing = [&](OpenGLDrawer& drawer) {
        drawer.fillRect(0, 0, 1280, 720, 90, 90, 90, 255);
        vortex.draw(drawer);
    };
    EXPECT_EQ(window->paint(drawing).count({90, 90, 90}), 1280 * 720) << "it begins with nothing";
    for (int i = 1; i < 200; ++i) spritesOf(vortex);
    ASSERT_LT(vortex.getSize(), 1);
    const Picture picture = window->paint(drawing);
    ASSERT_GE(vortex.getSize(), 1) << "this was the last one";
    int ringPixels = 0;
    for (const Pixel& colour : {red, Pixel{0, 191, 0}, Pixel{255, 128, 0}, Pixel{255, 127, 0}, blue,
                                Pixel{255, 255, 0}, Pixel{255, 0, 255}}) {
        ringPixels += picture.count(colour);
    }
    EXPECT_EQ(ringPixels, 1280 * 720) << "pure colours from edge to edge";
}

// --- the runner's sprite

static Player playerIn(float vx, bool airborne, bool facingRight) {
    Player player({});
    Inspector::setMotion(player, {5, 5, vx, 0, false, airborne, facingRight});
    return player;
}

// The sprites of the table for running, for the air and for standing, in order.
static const std::vector<int> run = {5, 6, 7, 8, 9, 10};
static const std::vector<int> air = {2, 3, 4, 3};
static const std::vector<int> stand = {11, 12, 13, 12};

static const SpriteRecorder::Sprite& onlySprite(Player& player) {
    EXPECT_EQ(spritesOf(player).size(), 1u);
    return recorder().sprites.at(0);
}

// Whether a texture shows the pixels of an entry of the sprites' table.
static bool shows(std::uint32_t handle, int entry) {
    const auto pixelsOf = [](std::uint32_t texture) {
        std::vector<std::uint8_t> bytes(32 * 32 * 4);
        glBindTexture(GL_TEXTURE_2D, recorder().textureRecord(texture)->name);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
        glBindTexture(GL_TEXTURE_2D, 0);
        return bytes;
    };
    const std::uint32_t expected = createSpriteTexture(recorder(), static_cast<std::size_t>(entry));
    const bool same = pixelsOf(handle) == pixelsOf(expected);
    recorder().deleteTexture(expected);
    return same;
}

TEST(RunnerSprite, ChoosesItsPictureByHowItMovesAndStepsEveryFourthDrawing) {
    expectTextures(12, Player({}), Player({}));
    struct Case {
        float vx;
        bool airborne;
        std::vector<int> pictures;
    };
    for (const Case& motion : {Case{0.3f, false, run}, Case{-0.01f, false, run}, Case{0, true, air},
                               Case{1, true, air}, Case{0, false, stand}}) {
        Player player = playerIn(motion.vx, motion.airborne, true);
        for (std::size_t drawing = 0; drawing < 60; ++drawing) {
            const int picture = motion.pictures[drawing / 4 % motion.pictures.size()];
            ASSERT_TRUE(shows(onlySprite(player).handle, picture)) << "drawing " << drawing;
        }
    }
}

TEST(RunnerSprite, FacesLeftAsTheMirrorImageInTheSameTile) {
    const auto paint = [](bool facingRight) {
        Player player = playerIn(0, false, facingRight);
        return window->paint([&](OpenGLDrawer& drawer) {
            drawer.fillRect(0, 0, 1280, 720, 90, 120, 60, 255);
            player.draw(drawer);
        });
    };
    const Pixel under = {90, 120, 60};
    const Picture right = paint(true);
    const Picture left = paint(false);
    EXPECT_LT(right.count(under), 1280 * 720 - 300) << "there is something to see";
    int wrong = 0;
    int outside = 0;
    for (int y = 0; y < 720; ++y) {
        for (int x = 0; x < 1280; ++x) {
            const bool inTile = x >= 608 && x < 672 && y >= 480 && y < 544;
            const bool painted = right.at(x, y) != under || left.at(x, y) != under;
            wrong += inTile && right.at(x, y) != left.at(1279 - x, y);
            outside += !inTile && painted;
        }
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(outside, 0);
}

TEST(RunnerSprite, SpinsAwayWithoutEnd) {
    Player player = playerIn(0.5f, false, false);
    player.startWarp();
    float warp = 1 - 0.01f;
    for (std::size_t drawing = 0; drawing < 250; ++drawing) {
        const SpriteRecorder::Sprite& sprite = onlySprite(player);
        ASSERT_TRUE(sprite.turned && shows(sprite.handle, air[drawing / 4 % 4]));
        ASSERT_EQ(sprite.x, 608);
        ASSERT_FLOAT_EQ(sprite.y, warp * 180 + 300);
        ASSERT_FLOAT_EQ(sprite.angle, warp * 720);
        ASSERT_EQ(sprite.pivotX, 16);
        ASSERT_EQ(sprite.pivotY, 16);
        ASSERT_EQ(sprite.scaleX, 2);
        ASSERT_EQ(sprite.scaleY, 2);
        warp -= 0.01f;
    }
}
