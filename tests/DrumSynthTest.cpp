// SPDX-License-Identifier: Zlib
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "game/Noise.h"
#include "sound/ClapSynth.h"
#include "sound/CrashSynth.h"
#include "sound/HatSynth.h"
#include "sound/KickSynth.h"

static std::vector<std::unique_ptr<Synthesizer>> allDrums() {
    std::vector<std::unique_ptr<Synthesizer>> drums;
    drums.push_back(std::make_unique<KickSynth>());
    drums.push_back(std::make_unique<ClapSynth>());
    drums.push_back(std::make_unique<HatSynth>());
    drums.push_back(std::make_unique<CrashSynth>());
    return drums;
}

static std::vector<float> render(Synthesizer& drum, std::size_t frames) {
    std::vector<float> output(2 * frames, 8.0f); // something sounds already
    drum.render(output.data(), static_cast<std::int32_t>(frames));
    for (float& sample : output) sample -= 8;
    return output;
}

static std::size_t soundingFrames(Synthesizer& drum) {
    std::size_t frames = 0;
    float frame[2];
    for (; drum.isActive(); ++frames) drum.render(frame, 1);
    return frames - 1; // the last one only ended the hit
}

TEST(DrumSynth, HitsLastTheirSamples) {
    constexpr std::size_t lengths[][2] = {{5512, 5512}, {6478, 6133}, {5512, 5512}, {22047, 14701}};
    const auto drums = allDrums();
    for (std::size_t i = 0; i < drums.size(); ++i) {
        for (const bool alternate : {false, true, false}) {
            EXPECT_FALSE(drums[i]->isActive());
            drums[i]->trigger(true, 0, alternate);
            EXPECT_EQ(soundingFrames(*drums[i]), lengths[i][alternate ? 1 : 0]) << i;
        }
    }
}

// The noise through the two equal stages of the clap's filter, without an envelope. It is at its
// height on the first sample of each burst but the first, and below it everywhere else.
TEST(DrumSynth, AClapBurstsFourTimesOrTwice) {
    for (const bool alternate : {false, true}) {
        ClapSynth clap;
        clap.trigger(true, 0, alternate);
        noiseSeed() = 1;
        std::vector<float> output(2 * 7000);
        clap.render(output.data(), 7000);
        noiseSeed() = 1;
        const float coefficient = alternate ? 0.999f : 0.1f;
        std::vector<std::size_t> begins = {0};
        float z1 = 0;
        float z2 = 0;
        for (std::size_t i = 0; i < 6000; ++i) {
            const float noise = noiseUnit();
            const float first = noise + coefficient * z1;
            const float second = first + coefficient * z2;
            z1 = noise;
            z2 = first;
            if (output[2 * i] == second * 1.0f * 0.15f) begins.push_back(i);
        }
        // The last sample of a burst is already the first of the next.
        const std::vector<std::size_t> four = {0, 138, 138 + 207, 138 + 207 + 276,
                                               138 + 207 + 276 + 345};
        const std::vector<std::size_t> two = {0, 276, 276 + 345};
        ASSERT_EQ(begins.size(), alternate ? two.size() : four.size());
        for (std::size_t i = 1; i < begins.size(); ++i) {
            EXPECT_EQ(begins[i], (alternate ? two : four)[i] - 1);
        }
    }
}

TEST(DrumSynth, AnOffsetCountsForOneBuffer) {
    for (const auto& drum : allDrums()) {
        drum->trigger(true, 10, false);
        const std::vector<float> begun = render(*drum, 100);
        EXPECT_EQ(begun[2 * 9], 0);
        EXPECT_NE(begun[2 * 10], 0);
        EXPECT_EQ(begun[2 * 10], begun[2 * 10 + 1]);
        EXPECT_NE(render(*drum, 100)[0], 0);

        for (const std::int32_t beyond : {100, 1000}) { // is lost
            drum->trigger(true, beyond, false);
            EXPECT_EQ(render(*drum, 100), std::vector<float>(200));
            EXPECT_NE(render(*drum, 100)[0], 0);
        }
    }
}

TEST(DrumSynth, AHitEndsAtOnceAndByItselfLeavesTheRestOfTheBuffer) {
    for (const auto& drum : allDrums()) {
        drum->trigger(true, 0, false);
        drum->trigger(false, 5, true);
        EXPECT_FALSE(drum->isActive());
        drum->trigger(true, 0, true);
        const std::vector<float> whole = render(*drum, 30000);
        EXPECT_FALSE(drum->isActive());
        EXPECT_EQ(std::vector<float>(whole.begin() + 2 * 14702, whole.end()),
                  std::vector<float>(2 * (30000 - 14702)));
    }
}

TEST(DrumSynth, AKickIsStartedAnewAndItsOtherHitIsLower) {
    KickSynth kick;
    kick.trigger(true, 0, false);
    const std::vector<float> normal = render(kick, 1000);
    EXPECT_LT(normal[0], 0.03f);
    kick.trigger(true, 0, false);
    EXPECT_EQ(render(kick, 1000), normal);
    kick.trigger(true, 0, true);
    const std::vector<float> alternate = render(kick, 1000);
    // How soon the wave comes down again, in samples.
    const auto half = [](const std::vector<float>& hit) {
        std::size_t i = 0;
        while (hit[2 * i] > 0) ++i;
        return i;
    };
    EXPECT_LT(half(normal), half(alternate));
}
