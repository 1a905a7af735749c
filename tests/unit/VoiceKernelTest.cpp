// SPDX-License-Identifier: Zlib
#include "sound/VoiceKernel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>

// A bank rendered together at one level, and a bank that gets the same notes and is rendered voice
// by voice.
class VoiceKernelTest : public testing::TestWithParam<VoiceKernel::Level> {
protected:
    using Patch = std::array<float, 16>; // in the order of the parameters
    enum Parameter {
        filterRes = 2,
        filterAttackTime = 5,
        filterReleaseTime = 6,
        filterEnvAmount = 7,
        attackTime = 10,
        releaseTime = 11,
        noteLength = 12,
        distGain = 13,
        octave = 14,
        detunedSawAmount = 15,
    };

    void SetUp() override {
        if (GetParam() > VoiceStages::best()) {
            GTEST_SKIP() << "not supported by this processor or this build";
        }
        VoiceKernel::setLevel(GetParam());
    }
    void TearDown() override { VoiceKernel::setLevel(VoiceStages::best()); }

    // The same numbers with every C++ library, unlike the distributions of <random>.
    std::uint32_t draw(std::size_t end) {
        seed = seed * 1664525 + 1013904223;
        return static_cast<std::uint32_t>((std::uint64_t(seed) * end) >> 32);
    }
    float drawUnit() { return static_cast<float>(draw(1 << 24)) / (1 << 24); }
    bool drawFlag() { return draw(2) == 1; }

    Patch drawPatch(float mostResonance) {
        Patch patch;
        for (float& value : patch) value = drawUnit();
        patch[filterRes] *= mostResonance;
        patch[filterEnvAmount] = 2 * patch[filterEnvAmount] - 1;
        for (const Parameter time :
             {attackTime, releaseTime, filterAttackTime, filterReleaseTime}) {
            if (drawFlag()) patch[time] = drawFlag() ? 0.0f : 1.0f;
        }
        patch[noteLength] = 0.005f + patch[noteLength] * 0.05f;
        patch[distGain] = 1 + 3 * patch[distGain];
        patch[octave] = drawFlag() ? 1.0f : 0.25f;
        if (drawFlag()) patch[detunedSawAmount] = 0;
        return patch;
    }

    void start(std::size_t index, const Patch& patch, float frequency, std::int32_t offset) {
        for (SimpleSynth* voice : {&together[index], &oneByOne[index]}) {
            for (std::size_t i = 0; i < patch.size(); ++i) {
                const std::string name = voice->parameterName(static_cast<std::int32_t>(i));
                voice->setParameter(name, patch[i], true);
            }
            voice->noteOn(frequency, offset);
        }
    }

    // Renders buffers of many lengths, each over the same random samples. Before each, some of the
    // free voices and a few others start a note.
    template <typename Start>
    void renderManyBuffers(Start startOne) {
        static constexpr std::int32_t lengths[] = {1, 7, 16, 55, 64, 65, 128, 256, 512, 661, 1024};
        for (int buffer = 0; buffer < 300; ++buffer) {
            const std::int32_t frames = lengths[draw(std::size(lengths))];
            const std::uint32_t share = draw(4) + 1;
            for (std::size_t i = 0; i < oneByOne.size(); ++i) {
                if (draw(oneByOne[i].isActive() ? 100 : share) == 0) startOne(i);
            }
            std::vector<float> expected(2 * static_cast<std::size_t>(frames));
            for (float& sample : expected) sample = drawUnit() - 0.5f;
            std::vector<float> output = expected;
            for (SimpleSynth& voice : oneByOne) voice.render(expected.data(), frames);
            SimpleSynth::renderAll(together, output.data(), frames);
            ASSERT_EQ(std::memcmp(output.data(), expected.data(), 4 * output.size()), 0) << buffer;
            ASSERT_TRUE(std::ranges::equal(together, oneByOne, {}, &SimpleSynth::isActive,
                                           &SimpleSynth::isActive));
        }
    }

    std::array<SimpleSynth, SimpleSynth::bankSize> together;
    std::array<SimpleSynth, SimpleSynth::bankSize> oneByOne;
    std::uint32_t seed = 1;
};

TEST_P(VoiceKernelTest, StartsWaitsAndEndsLikeSingleVoices) {
    renderManyBuffers([this](std::size_t voice) {
        const auto offset = static_cast<std::int32_t>(draw(2) * draw(700));
        start(voice, drawPatch(1), 50 + 2000 * drawUnit() * drawUnit(), offset);
    });
}

TEST_P(VoiceKernelTest, RecoversLikeSingleVoicesWhenFiltersBlowUp) {
    renderManyBuffers(
        [this](std::size_t voice) { start(voice, drawPatch(12), 50 + 400 * drawUnit(), 0); });
}

TEST_P(VoiceKernelTest, TakesAbsurdValuesLikeSingleVoices) {
    static constexpr float absurd[] = {NAN,   HUGE_VALF, -HUGE_VALF, 0,  -0.0f, -1,    2,
                                       1e30f, -1e30f,    1e-40f,     40, -440,  44100, 44101};
    renderManyBuffers([this](std::size_t voice) {
        Patch patch = drawPatch(1);
        patch[draw(patch.size())] = absurd[draw(std::size(absurd))];
        start(voice, patch, drawFlag() ? absurd[draw(std::size(absurd))] : 440 * drawUnit(), 0);
    });
}

INSTANTIATE_TEST_SUITE_P(Levels, VoiceKernelTest,
                         testing::Values(VoiceKernel::Level::sse2, VoiceKernel::Level::avx2));
