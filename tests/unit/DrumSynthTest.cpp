// SPDX-License-Identifier: Zlib
#include <memory>
#include <vector>

#include <gtest/gtest.h>

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

TEST(DrumSynth, AHitEndsAtOnce) {
    for (const auto& drum : allDrums()) {
        drum->trigger(true, 0, false);
        drum->trigger(false, 5, true);
        EXPECT_FALSE(drum->isActive());
    }
}
