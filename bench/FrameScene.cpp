// SPDX-License-Identifier: Zlib
#include "bench/FrameScene.h"

#include "app/Application.h"
#include "bench/GlStandIn.h"
#include "game/GamePlay.h"
#include "game/Noise.h"
#include "tools/Inspector.h"

static constexpr std::uint32_t turnPeriod = 90; // frames in one direction
static constexpr std::uint32_t jumpPeriod = 25; // frames

// Ledges of two rows, eleven tiles long with gaps of five, each under a gap of those above it.
static std::uint8_t codeAt(std::uint32_t x, std::uint32_t y) {
    const std::uint32_t group = y / 6;
    const std::uint32_t place = (x + group * 8) % 16;
    if (y % 6 >= 2 || place >= 11) return LevelMap::empty;
    return place == 5 && group % 4 == 0 && y % 6 == 0 ? LevelMap::flame : std::uint8_t{0x20};
}

LevelMap FrameScene::makeLevel(std::uint32_t width, std::uint32_t height) {
    LoadedImage picture;
    picture.width = width;
    picture.height = height;
    picture.pixels =
        std::make_unique_for_overwrite<std::uint8_t[]>(std::size_t{width} * height * 4);
    std::uint8_t* pixel = picture.pixels.get();
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x, pixel += 4) *pixel = codeAt(x, y);
    }
    return LevelMap(picture);
}

Application& FrameScene::application() {
    GlStandIn::start();
    static Application only(Inspector::quietArguments());
    return only;
}

FrameScene::FrameScene(std::uint32_t width, std::uint32_t height) {
    Application& owner = application(); // made before the seed is set, since it uses the noise
    noiseSeed() = 1;
    auto state = std::make_unique<GamePlay>(owner);
    play = state.get();
    Inspector::setState(owner, std::move(state));
    Inspector::setLevel(*play, [&] { return makeLevel(width, height); });
    Inspector::setMotion(Inspector::player(*play), {255.5f, 400, 0, 0, false, true, true});
}

void FrameScene::runFrame() {
    if (frame % turnPeriod == 0) {
        const bool right = frame / turnPeriod % 2 == 0;
        play->keyReleased(right ? "P1Left" : "P1Right", nullptr);
        play->keyPressed(right ? "P1Right" : "P1Left", nullptr);
    }
    if (frame % jumpPeriod == 0) play->keyPressed("Action", nullptr);
    ++frame;
    Inspector::runFrame(application());
}

void FrameScene::runFrames(int count) {
    for (int i = 0; i < count; ++i) runFrame();
}

WorldPoint FrameScene::position() const {
    return Inspector::player(*play).position();
}
