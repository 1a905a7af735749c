// SPDX-License-Identifier: Zlib
// Clouds, star trail, vortex and the runner's sprite: what they ask of the drawer, and where it
// counts, the pixels that come of it.
#include <algorithm>
#include <cmath>

#include "drawing/SpriteTexture.h"
#include "game/CloudField.h"
#include "game/Noise.h"
#include "game/Player.h"
#include "game/StarTrail.h"
#include "game/TimeVortex.h"
#include "images/EmbeddedImages.h"
#include "tests/GlWindow.h"
#include "tools/Inspector.h"

// The drawer of the game, which also writes down the textures made and the sprites drawn.
class RecordingDrawer : public OpenGLDrawer {
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

static GlWindow* const window = GlWindow::open<RecordingDrawer>();

static RecordingDrawer& recorder() {
    return static_cast<RecordingDrawer&>(window->drawer());
}

// The sprites that one drawing asks for, not painted.
template <typename Effect, typename... Camera>
static std::vector<RecordingDrawer::Sprite> spritesOf(Effect& effect, Camera... camera) {
    recorder().sprites.clear();
    recorder().painting = false;
    effect.draw(recorder(), camera...);
    recorder().painting = true;
    return recorder().sprites;
}

// Lets the textures of an effect be made and gives their handles: hard pixels, loaded just once.
template <typename Effect, typename... Camera>
static std::vector<std::uint32_t> texturesOf(Effect& first, Effect& second, Camera... camera) {
    recorder().made.clear();
    first.draw(recorder(), camera...);
    const std::vector<std::uint32_t> handles = recorder().made;
    first.draw(recorder(), camera...);
    second.draw(recorder(), camera...);
    EXPECT_EQ(recorder().made, handles) << "all objects share the textures of the first drawing";
    const auto filterOf = [](std::uint32_t handle) {
        GLint filter = 0;
        glBindTexture(GL_TEXTURE_2D, recorder().textureRecord(handle)->name);
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &filter);
        glBindTexture(GL_TEXTURE_2D, 0);
        return filter;
    };
    for (const std::uint32_t handle : handles) EXPECT_EQ(filterOf(handle), GL_NEAREST);
    const std::uint32_t later =
        recorder().createTexture(makePixels(1, 1, [](int, int) { return white; }), 1, 1);
    EXPECT_EQ(filterOf(later), GL_LINEAR) << "whoever comes next gets smooth textures";
    return handles;
}

// --- clouds

static void hideAllClouds(CloudField& field) {
    for (int i = 0; i < 128; ++i) Inspector::setCloud(field, i, {60, 63, false});
}

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

TEST(Clouds, ShowStrictlyInsideTheirWindow) {
    CloudField first;
    CloudField field;
    ASSERT_EQ(texturesOf(first, field, WorldPoint{0, 0}).size(), 1u);
    struct Case {
        WorldPoint camera;
        float viewX, viewY; // field units
    };
    for (const Case& view : {Case{{0, 0}, 0, 0}, Case{{384, 256}, 0, 0}, Case{{-500, -500}, 0, 0},
                             Case{{512, 320}, 8, 4}, Case{{400, 700}, 1, 27.75f},
                             Case{{61.5f, 982.5f}, 0, 45.40625f}}) {
        struct Place {
            float x, y;
            bool seen;
        };
        const float right = view.viewX + 48;
        const float bottom = view.viewY + 32;
        const float middleY = view.viewY + 5;
        const float above = 60; // enough to be a number that has a next one
        for (const Place& place :
             {Place{view.viewX, middleY, false},
              Place{std::nextafter(view.viewX, above), middleY, true},
              Place{std::nextafter(right, 0.0f), middleY, true}, Place{right, middleY, false},
              Place{view.viewX + 7, view.viewY, false},
              Place{view.viewX + 7, std::nextafter(view.viewY, 99.0f), true},
              Place{view.viewX + 7, std::nextafter(bottom, 0.0f), true},
              Place{view.viewX + 7, bottom, false}}) {
            for (int i = 0; i < 128; ++i) Inspector::setCloud(field, i, {-1, 200, true});
            Inspector::setCloud(field, 77, {place.x, place.y, true});
            const auto sprites = spritesOf(field, view.camera);
            ASSERT_EQ(sprites.size(), place.seen ? 1u : 0u) << place.x << ", " << place.y;
            if (!place.seen) continue;
            EXPECT_FLOAT_EQ(sprites[0].x, (place.x - view.viewX) * 80 - 132);
            EXPECT_FLOAT_EQ(sprites[0].y, (place.y - view.viewY) * 45 - 68);
            EXPECT_EQ(sprites[0].scaleX, 1);
            EXPECT_EQ(sprites[0].scaleY, 1);
            EXPECT_EQ(sprites[0].colour, (std::array<float, 4>{1, 1, 1, 1}));
        }
    }
}

TEST(Clouds, DriftSeenOrNotAndTurnBeyondTheEdges) {
    CloudField field;
    hideAllClouds(field);
    Inspector::setCloud(field, 0, {64, 10, true});
    Inspector::setCloud(field, 1, {63.9985f, 10, true});
    Inspector::setCloud(field, 2, {0, 10, false});
    Inspector::setCloud(field, 3, {0.0015f, 10, false});
    Inspector::setCloud(field, 4, {30, 10, true});
    spritesOf(field, WorldPoint{10000, 10000}); // all out of sight
    EXPECT_EQ(Inspector::cloud(field, 0).x, 64 + 0.001f);
    EXPECT_FALSE(Inspector::cloud(field, 0).driftingRight) << "64.001 is beyond";
    EXPECT_TRUE(Inspector::cloud(field, 1).driftingRight) << "63.9995 is not";
    EXPECT_EQ(Inspector::cloud(field, 2).x, -0.001f);
    EXPECT_TRUE(Inspector::cloud(field, 2).driftingRight);
    EXPECT_FALSE(Inspector::cloud(field, 3).driftingRight);
    EXPECT_EQ(Inspector::cloud(field, 4).x, 30 + 0.001f);
    spritesOf(field, WorldPoint{10000, 10000});
    EXPECT_EQ(Inspector::cloud(field, 0).x, 64 + 0.001f - 0.001f);
    EXPECT_FALSE(Inspector::cloud(field, 0).driftingRight);
    EXPECT_EQ(Inspector::cloud(field, 2).x, 0);
    EXPECT_TRUE(Inspector::cloud(field, 2).driftingRight);
    EXPECT_EQ(Inspector::cloud(field, 4).y, 10);

    // On the edge itself they go on.
    Inspector::setCloud(field, 0, {64 - 0.001f, 10, true});
    Inspector::setCloud(field, 1, {0.001f, 10, false});
    spritesOf(field, WorldPoint{10000, 10000});
    EXPECT_EQ(Inspector::cloud(field, 0).x, 64);
    EXPECT_TRUE(Inspector::cloud(field, 0).driftingRight);
    EXPECT_EQ(Inspector::cloud(field, 1).x, 0);
    EXPECT_FALSE(Inspector::cloud(field, 1).driftingRight);
}

// --- stars

// A start of the noise after which the next number is in a range.
static std::uint32_t seedFor(float least, float most) {
    for (std::uint32_t seed = 0; seed < 1000000; ++seed) {
        noiseSeed() = seed;
        const float number = noiseUnit();
        if (number >= least && number <= most) return seed;
    }
    ADD_FAILURE() << "no number from " << least << " to " << most;
    return 0;
}

TEST(Stars, TakeSixNumbersInOrderAndOneAFrame) {
    StarTrail first;
    StarTrail trail;
    ASSERT_EQ(texturesOf(first, trail, WorldPoint{0, 0}).size(), 1u);
    for (const std::uint32_t seed : {1u, 2u, 3u, 4u, 99u}) {
        StarTrail stars;
        noiseSeed() = seed;
        stars.spawn({70, 80});
        stars.spawn({0, 0}); // too soon
        EXPECT_EQ(noiseSeed(), seed + 6);
        const auto sprites = spritesOf(stars, WorldPoint{71.5f, 78.5f});
        ASSERT_EQ(sprites.size(), 1u);
        noiseSeed() = seed;
        const float size = noiseUnit() * 3 + 1;
        std::array<float, 4> colour = {0, 0, 0, 1};
        for (std::size_t i = 0; i < 3; ++i) colour[i] = noiseUnit() > 0.5f ? 1.0f : 0.0f;
        const float angle = noiseUnit() * 360;
        const float spin = 2 * noiseUnit() - 1;
        EXPECT_EQ(sprites[0].colour, colour) << seed;
        EXPECT_EQ(sprites[0].angle, angle);
        EXPECT_EQ(sprites[0].scaleX, size);
        EXPECT_EQ(sprites[0].scaleY, size);
        EXPECT_EQ(sprites[0].pivotX, 8);
        EXPECT_EQ(sprites[0].pivotY, 8);
        // The runner's place on the screen, less half a unit for each unit of size.
        EXPECT_FLOAT_EQ(sprites[0].x, 608 - size * 0.5f);
        EXPECT_FLOAT_EQ(sprites[0].y, 480 - size * 0.5f);

        const auto next = spritesOf(stars, WorldPoint{72.5f, 78});
        EXPECT_FLOAT_EQ(next[0].x, 608 - 64 - (size - 0.075f) * 0.5f);
        EXPECT_FLOAT_EQ(next[0].y, 480 + 32 - (size - 0.075f) * 0.5f);
        EXPECT_EQ(next[0].scaleX, size - 0.075f);
        float turned = angle + spin;
        if (turned > 360) turned -= 360;
        if (turned < 0) turned += 360;
        EXPECT_EQ(next[0].angle, turned);
    }
}

TEST(Stars, LiveFor14To54DrawingsAndFadeAtTheEnd) {
    struct Case {
        float least, most; // of the number that makes the size
        int drawings;
    };
    for (const Case& life :
         {Case{0, 0.0005f, 14}, Case{0.499f, 0.501f, 34}, Case{0.9995f, 1, 54}}) {
        StarTrail trail;
        noiseSeed() = seedFor(life.least, life.most);
        trail.spawn({0, 0});
        int drawings = 0;
        for (;; ++drawings) {
            const auto sprites = spritesOf(trail, WorldPoint{0, 0});
            if (sprites.empty() || drawings == 100) break;
            const float size = sprites[0].scaleX;
            ASSERT_GT(size, 0);
            const float alpha = size >= 1 ? 1 : size / ((size - 1) * -0.33333337f + size);
            ASSERT_EQ(sprites[0].colour[3], alpha) << "at size " << size;
        }
        EXPECT_EQ(drawings, life.drawings);
        EXPECT_TRUE(spritesOf(trail, WorldPoint{0, 0}).empty()) << "a dead star stays dead";
    }
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
        if (i >= 128) continue;
        for (std::size_t k = 1; k < sprites.size(); ++k) {
            ASSERT_LT(sprites[k - 1].x, sprites[k].x) << "the oldest first";
        }
    }
}

// --- vortex

TEST(Vortex, GrowsIn201DrawingsAndTurnsThroughItsPictures) {
    TimeVortex first(false);
    TimeVortex second(true);
    const std::vector<std::uint32_t> phases = texturesOf(first, second);
    ASSERT_EQ(phases.size(), 6u);
    TimeVortex vortex(false);
    float size = 0;
    float angle = 0;
    std::size_t drawings = 0;
    for (; vortex.getSize() < 1 && drawings < 300; ++drawings) {
        const auto sprites = spritesOf(vortex);
        ASSERT_EQ(sprites.size(), 1u);
        const auto& rings = sprites[0];
        ASSERT_EQ(rings.handle, phases[drawings / 8 % 6]) << "drawing " << drawings;
        ASSERT_EQ(rings.scaleX, size * 200);
        ASSERT_EQ(rings.scaleY, size * 200);
        ASSERT_FLOAT_EQ(rings.x, 640 - size * 800);
        ASSERT_FLOAT_EQ(rings.y, 360 - size * 800);
        ASSERT_EQ(rings.pivotX, 4);
        ASSERT_EQ(rings.pivotY, 4);
        ASSERT_EQ(rings.angle, angle);
        size += 0.005f;
        angle += 4;
        if (angle > 360) angle -= 360;
        ASSERT_EQ(vortex.getSize(), size);
    }
    EXPECT_EQ(drawings, 201u);
}

TEST(Vortex, LooksLikeFourRingsDrawnOverEachOther) {
    static constexpr float colours[6][3] = {{1, 0, 0}, {0, 0.75f, 0}, {1, 0.5f, 0},
                                            {0, 0, 1}, {1, 1, 0},     {1, 0, 1}};
    std::array<std::uint32_t, 4> rings;
    recorder().setTextureFiltering(false);
    for (std::size_t i = 0; i < 4; ++i) rings[i] = createSpriteTexture(recorder(), spriteRing + i);
    recorder().setTextureFiltering(true);
    TimeVortex vortex(false);
    float size = 0;
    float angle = 0;
    for (std::size_t drawing = 0; drawing < 200; ++drawing) {
        if (drawing % 13 == 0) {
            const Picture literal = window->paint([&](OpenGLDrawer& drawer) {
                for (std::size_t i = 0; i < 4; ++i) {
                    const float* colour = colours[(drawing / 8 + i) % 6];
                    const float scale = size * 200;
                    drawer.drawTextureRotated(rings[i], 640 - scale * 4, 360 - scale * 4, angle, 4,
                                              4, scale, scale, colour[0], colour[1], colour[2], 1);
                }
            });
            const Picture real = window->paint([&](OpenGLDrawer& drawer) { vortex.draw(drawer); });
            ASSERT_TRUE(real == literal) << "drawing " << drawing;
        } else {
            spritesOf(vortex);
        }
        size += 0.005f;
        angle += 4;
        if (angle > 360) angle -= 360;
    }
}

TEST(Vortex, ShrinksFromTwoToNothingIn41DrawingsAndStaysThere) {
    TimeVortex vortex(true);
    EXPECT_EQ(vortex.getSize(), 2);
    int drawings = 0;
    for (; vortex.getSize() > 0 && drawings < 100; ++drawings) spritesOf(vortex);
    EXPECT_EQ(drawings, 41);
    const Picture picture = window->paint([&](OpenGLDrawer& drawer) { vortex.draw(drawer); });
    EXPECT_EQ(vortex.getSize(), 0);
    EXPECT_TRUE(picture.isBlack());
}

TEST(Vortex, HidesTheWholeScreenInItsLastDrawing) {
    // Over two colours that no ring has, so that nothing shows through unnoticed.
    for (const Pixel& under : {Pixel{10, 200, 255}, Pixel{90, 90, 90}}) {
        TimeVortex vortex(false);
        const auto drawing = [&](OpenGLDrawer& drawer) {
            drawer.fillRect(0, 0, 1280, 720, static_cast<std::uint8_t>(under.r),
                            static_cast<std::uint8_t>(under.g), static_cast<std::uint8_t>(under.b),
                            255);
            vortex.draw(drawer);
        };
        EXPECT_EQ(window->paint(drawing).count(under), 1280 * 720) << "it begins with nothing";
        for (int i = 1; i < 200; ++i) spritesOf(vortex);
        ASSERT_LT(vortex.getSize(), 1);
        const Picture picture = window->paint(drawing);
        ASSERT_GE(vortex.getSize(), 1) << "this was the last one";
        int ringPixels = 0;
        for (const Pixel& colour : {red, Pixel{0, 191, 0}, Pixel{255, 128, 0}, Pixel{255, 127, 0},
                                    blue, Pixel{255, 255, 0}, Pixel{255, 0, 255}}) {
            ringPixels += picture.count(colour);
        }
        EXPECT_EQ(ringPixels, 1280 * 720) << "pure colours from edge to edge";
    }
}

// --- the runner's sprite

// The handles of the sprites, as slots: run 0 to 5, air 6 to 9, standing 10 to 13.
static const std::vector<std::uint32_t>& spriteSlots() {
    static const std::vector<std::uint32_t> slots = [] {
        Player first({0, 0});
        Player second({0, 0});
        std::vector<std::uint32_t> handles = texturesOf(first, second);
        EXPECT_EQ(handles.size(), 12u);
        handles.insert(handles.begin() + 9, handles[7]);
        handles.push_back(handles[11]);
        return handles;
    }();
    return slots;
}

TEST(RunnerSprite, ChoosesItsPictureByHowItMovesAndStepsEveryFourthDrawing) {
    const std::vector<std::uint32_t>& slots = spriteSlots();
    struct Case {
        float vx;
        bool airborne;
        std::size_t firstSlot, frames;
    };
    for (const Case& motion : {Case{0.3f, false, 0, 6}, Case{-0.01f, false, 0, 6},
                               Case{0, true, 6, 4}, Case{1, true, 6, 4}, Case{0, false, 10, 4}}) {
        Player player({5, 5});
        Inspector::setMotion(player, {5, 5, motion.vx, 0, false, motion.airborne, true});
        for (std::size_t drawing = 0; drawing < 60; ++drawing) {
            const auto sprites = spritesOf(player);
            ASSERT_EQ(sprites.size(), 1u);
            const std::size_t slot = motion.firstSlot + drawing / 4 % motion.frames;
            ASSERT_EQ(sprites[0].handle, slots[slot]) << "drawing " << drawing;
        }
    }
}

TEST(RunnerSprite, LoadsThePicturesOfItsSlots) {
    const std::array<std::size_t, 14> pictures = {5, 6, 7, 8, 9, 10, 2, 3, 4, 3, 11, 12, 13, 12};
    for (std::size_t slot = 0; slot < 14; ++slot) {
        const auto paint = [](std::uint32_t handle) {
            return window->paint(
                [=](OpenGLDrawer& drawer) { drawer.drawTexture(handle, 0, 0, 1, 1, 1, 1, 1, 1); });
        };
        const std::uint32_t expected = createSpriteTexture(recorder(), pictures[slot]);
        EXPECT_EQ(paint(spriteSlots()[slot]).differenceTo(paint(expected)), "") << slot;
        recorder().deleteTexture(expected);
    }
}

TEST(RunnerSprite, FacesLeftAsTheMirrorImageInTheSameTile) {
    const auto paint = [](bool right) {
        Player player({5, 5});
        Inspector::setMotion(player, {5, 5, 0, 0, false, false, right});
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
            if (inTile && right.at(x, y) != left.at(1279 - x, y)) ++wrong;
            if (!inTile && painted) ++outside;
        }
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(outside, 0);
}

TEST(RunnerSprite, SpinsAwayWithoutEnd) {
    Player player({5, 5});
    Inspector::setMotion(player, {5, 5, 0.5f, 0, false, false, false});
    player.startWarp();
    float warp = 1 - 0.01f;
    for (std::size_t drawing = 0; drawing < 250; ++drawing) {
        const auto sprites = spritesOf(player);
        ASSERT_EQ(sprites.size(), 1u);
        ASSERT_TRUE(sprites[0].turned);
        ASSERT_EQ(sprites[0].handle, spriteSlots()[6 + drawing / 4 % 4]);
        ASSERT_EQ(sprites[0].x, 608);
        ASSERT_FLOAT_EQ(sprites[0].y, warp * 180 + 300);
        ASSERT_FLOAT_EQ(sprites[0].angle, warp * 720);
        ASSERT_EQ(sprites[0].pivotX, 16);
        ASSERT_EQ(sprites[0].pivotY, 16);
        ASSERT_EQ(sprites[0].scaleX, 2);
        ASSERT_EQ(sprites[0].scaleY, 2);
        warp -= 0.01f;
    }
    EXPECT_LT(warp, -1.5f);
}
