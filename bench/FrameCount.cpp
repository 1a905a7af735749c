// SPDX-License-Identifier: Zlib
// frame_count WIDTH HEIGHT FRAMES: plays so many frames in a level of so many tiles without GL, and
// prints where the runner ends and the time of a frame. Everything that is to be counted happens in
// countedFrames. See frame_instructions.
#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstring>
#include <iostream>
#include <vector>

#include "bench/FrameScene.h"

static constexpr int warmUpFrames = 10; // make all textures and fonts
static constexpr int batchFrames = 20;

extern "C" [[gnu::noipa]] void countedFrames(FrameScene& scene, int count) {
    scene.runFrames(count);
}

static std::uint32_t number(const char* text) {
    std::uint32_t value = 0;
    std::from_chars(text, text + std::strlen(text), value);
    return value;
}

int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::cerr << "usage: frame_count WIDTH HEIGHT FRAMES\n";
        return 2;
    }
    std::cout.setstate(std::ios::failbit); // the drawer's report
    FrameScene scene(number(argv[1]), number(argv[2]));
    scene.runFrames(warmUpFrames);
    std::cout.clear();

    std::vector<double> times; // microseconds a frame
    for (std::uint32_t done = 0; done < number(argv[3]); done += batchFrames) {
        const auto start = std::chrono::steady_clock::now();
        countedFrames(scene, batchFrames);
        const std::chrono::duration<double, std::micro> passed =
            std::chrono::steady_clock::now() - start;
        times.push_back(passed.count() / batchFrames);
    }
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2),
                     times.end());
    std::cout << "runner " << scene.position().x << " " << scene.position().y << "\n"
              << "microseconds " << times[times.size() / 2] << "\n";
}
