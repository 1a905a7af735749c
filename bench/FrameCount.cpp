// SPDX-License-Identifier: Zlib
// frame_count WIDTH HEIGHT FRAMES: plays FRAMES frames in a level of WIDTH by HEIGHT tiles, at
// least 512 by 1024. A stand-in replaces GL, so that only the game's own work is measured. The
// level repeats one pattern of ledges and flames, and the runner runs and jumps far from its edges,
// so the work is the same in a level of any size. Prints the runner's last position and the time of
// a frame. frame_instructions counts the instructions within countedFrames.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <vector>

#include "app/Application.h"
#include "base/Noise.h"
#include "screens/GamePlay.h"
#include "tests/support/GlStandIn.h"
#include "tools/Inspector.h"

static constexpr int warmUpFrames = 10; // textures and fonts are made in these
static constexpr int batchFrames = 20;
static constexpr std::uint32_t turnPeriod = 90; // frames in one direction
static constexpr std::uint32_t jumpPeriod = 25; // frames

// Ledges two rows high and eleven tiles long with gaps of five, shifted from group to group.
static std::uint8_t codeAt(std::uint32_t x, std::uint32_t y) {
    const std::uint32_t group = y / 6;
    const std::uint32_t place = (x + group * 8) % 16;
    if (y % 6 >= 2 || place >= 11) return LevelMap::empty;
    return place == 5 && group % 4 == 0 && y % 6 == 0 ? LevelMap::flame : std::uint8_t{0x20};
}

static LevelMap makeLevel(std::uint32_t width, std::uint32_t height) {
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

static void runFrames(Application& application, GamePlay& play, int count) {
    static std::uint32_t frame = 0;
    for (int i = 0; i < count; ++i, ++frame) {
        if (frame % turnPeriod == 0) {
            const bool right = frame / turnPeriod % 2 == 0;
            play.keyReleased(right ? "P1Left" : "P1Right", nullptr);
            play.keyPressed(right ? "P1Right" : "P1Left", nullptr);
        }
        if (frame % jumpPeriod == 0) play.keyPressed("Action", nullptr);
        Inspector::runFrame(application);
    }
}

extern "C" [[gnu::noipa]] void countedFrames(Application& application, GamePlay& play, int count) {
    runFrames(application, play, count);
}

static std::uint32_t number(const char* text) {
    return static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10));
}

int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::cerr << "usage: frame_count WIDTH HEIGHT FRAMES\n";
        return 2;
    }
    std::cout.setstate(std::ios::failbit); // silence the drawer
    GlStandIn::start();
    Application application(Inspector::quietArguments());
    noiseSeed() = 1;
    auto state = std::make_unique<GamePlay>(application);
    GamePlay& play = *state;
    Inspector::setState(application, std::move(state));
    Inspector::setLevel(play, [&] { return makeLevel(number(argv[1]), number(argv[2])); });
    Inspector::setMotion(Inspector::player(play), {255.5f, 400, 0, 0, false, true, true});
    runFrames(application, play, warmUpFrames);
    std::cout.clear();

    std::vector<double> times; // microseconds a frame
    for (std::uint32_t done = 0; done < number(argv[3]); done += batchFrames) {
        const auto start = std::chrono::steady_clock::now();
        countedFrames(application, play, batchFrames);
        const std::chrono::duration<double, std::micro> passed =
            std::chrono::steady_clock::now() - start;
        times.push_back(passed.count() / batchFrames);
    }
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    const WorldPoint end = Inspector::player(play).position();
    std::cout << "runner " << end.x << " " << end.y << "\nmicroseconds " << *middle << "\n";
}
