// SPDX-License-Identifier: Zlib
#include "sound/VoiceKernel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "sound/PolyphonicSynth.h"
#include "tests/support/ReferenceVoice.h"

static constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
static constexpr float infinity = std::numeric_limits<float>::infinity();

// The program's voices at one level of the processor, beside literal ones that get the same notes.
class VoiceKernelTest : public testing::TestWithParam<VoiceKernel::Level> {
protected:
    static constexpr std::size_t count = 32;

    void SetUp() override {
        if (GetParam() > VoiceStages::best()) {
            GTEST_SKIP() << "this processor, or this build, has no such instructions";
        }
        VoiceKernel::setLevel(GetParam());
    }
    void TearDown() override { VoiceKernel::setLevel(VoiceStages::best()); }

    // The same numbers from every C++ library, unlike the distributions of <random>.
    std::uint32_t draw(std::uint32_t end) {
        seed = seed * 1664525 + 1013904223;
        return static_cast<std::uint32_t>((std::uint64_t(seed) * end) >> 32);
    }
    float drawUnit() { return static_cast<float>(draw(1 << 24)) / (1 << 24); }
    bool drawFlag() { return draw(2) == 1; }

    ReferenceVoice::Patch drawPatch(float mostResonance) {
        ReferenceVoice::Values values;
        for (float& value : values) value = drawUnit(); // the flags' too
        auto patch = std::bit_cast<ReferenceVoice::Patch>(values);
        patch.filterRes *= mostResonance;
        patch.filterEnvAmount = 2 * patch.filterEnvAmount - 1;
        if (drawFlag()) patch.releaseTime = 0;
        patch.noteLength = 0.005f + patch.noteLength * 0.05f;
        patch.distGain = 1 + 3 * patch.distGain;
        patch.octave = drawFlag() ? 1.0f : 0.25f;
        if (drawFlag()) patch.detunedSawAmount = 0;
        return patch;
    }

    void start(std::size_t voice, const ReferenceVoice::Patch& patch, float frequency,
               std::int32_t offset) {
        literal[voice].patch = patch;
        literal[voice].givePatch(voices[voice]);
        literal[voice].noteOn(frequency, offset);
        voices[voice].noteOn(frequency, offset);
    }

    // Renders a buffer that holds something already, each channel its own; says whether the bits
    // and the voices at rest are the same, and the bits are those of numbers.
    bool renderBoth(std::int32_t frames) {
        std::vector<float> expected(2 * static_cast<std::size_t>(frames));
        for (float& sample : expected) sample = drawUnit() - 0.5f;
        std::vector<float> output = expected;
        for (ReferenceVoice& voice : literal) {
            voice.render<ReferenceVoice::ownTanh>(expected.data(), frames);
        }
        SimpleSynth::renderAll(voices, output.data(), frames);
        bool same = std::memcmp(output.data(), expected.data(), 4 * output.size()) == 0;
        for (std::size_t i = 0; i < count; ++i) {
            same = same && voices[i].isActive() == literal[i].active;
        }
        // The tanh holds a voice within its gain, whatever the patch.
        return same && std::ranges::all_of(output, [](float sample) {
                   return std::fabs(sample) <= 0.5f + 0.5f * count;
               });
    }

    // Buffers of all sizes; before each, some of the voices at rest, and a few others, start a
    // note.
    template <typename Start>
    void renderManyBuffers(int buffers, Start startOne) {
        static constexpr std::int32_t sizes[] = {1, 7, 16, 55, 64, 65, 128, 256, 512, 661, 1024};
        for (int buffer = 0; buffer < buffers; ++buffer) {
            const std::int32_t frames = sizes[draw(std::size(sizes))];
            const std::uint32_t share = draw(4) + 1; // from nearly none to all
            for (std::size_t i = 0; i < count; ++i) {
                const bool free = !literal[i].active;
                if (draw(free ? share : 100) == 0) startOne(i);
            }
            ASSERT_TRUE(renderBoth(frames)) << "buffer " << buffer << " of " << frames;
        }
    }

    std::vector<SimpleSynth> voices = std::vector<SimpleSynth>(count);
    std::vector<ReferenceVoice> literal = std::vector<ReferenceVoice>(count);
    std::uint32_t seed = 1;
};

TEST_P(VoiceKernelTest, StartsEndsWaitsAndRestsLikeLiteralVoices) {
    renderManyBuffers(600, [this](std::size_t voice) {
        const auto offset = static_cast<std::int32_t>(draw(2) * draw(700));
        const float frequency = 50 + 2000 * drawUnit() * drawUnit();
        start(voice, drawPatch(1), frequency, offset);
    });
}

TEST_P(VoiceKernelTest, HealsFiltersThatBlowUpLikeLiteralVoices) {
    renderManyBuffers(
        300, [this](std::size_t voice) { start(voice, drawPatch(12), 50 + 400 * drawUnit(), 0); });
    int healings = 0;
    for (const ReferenceVoice& voice : literal) healings += voice.healings;
    EXPECT_GT(healings, 100);
}

TEST_P(VoiceKernelTest, BearsAbsurdParametersLikeLiteralVoices) {
    static constexpr float absurd[] = {notANumber, infinity, -infinity, 0,      -0.0f, -1,
                                       2,          1e30f,    -1e30f,    1e-40f, 40,    -1e-3f};
    static constexpr float pitches[] = {notANumber, infinity, -infinity, 0,      -0.0f,  -440,
                                        1e9,        44100,    44101,     30000,  1e-40f, -1e9,
                                        440,        1e30f,    22050,     1540.1f};
    renderManyBuffers(600, [this](std::size_t voice) {
        auto values = std::bit_cast<ReferenceVoice::Values>(drawPatch(1));
        values[draw(values.size())] = absurd[draw(std::size(absurd))];
        const float pitch = drawFlag() ? pitches[draw(std::size(pitches))] : 440 * drawUnit();
        start(voice, std::bit_cast<ReferenceVoice::Patch>(values), pitch, 0);
    });
}

// A patch's corner cases: no attack, no release, one that takes all, both at once.
TEST_P(VoiceKernelTest, TurnsEnvelopesAtTheirCornersLikeLiteralVoices) {
    static constexpr float times[] = {0, 1e-4f, 0.5f, 0.999f, 1};
    std::uint32_t next = 0;
    renderManyBuffers(400, [this, &next](std::size_t voice) {
        ReferenceVoice::Patch patch = drawPatch(0.9f);
        patch.attackTime = times[next % 5];
        patch.releaseTime = times[next / 5 % 5];
        patch.filterAttackTime = times[next / 25 % 5];
        patch.filterReleaseTime = times[next / 125 % 5];
        patch.noteLength = next % 2 == 0 ? 0.05f : 0.043112498f;
        ++next;
        start(voice, patch, 110, 0);
    });
}

TEST_P(VoiceKernelTest, RendersTheVoicesOfABank) {
    const auto bank = std::make_unique<PolyphonicSynth<SimpleSynth>>();
    for (std::size_t i = 0; i < count; ++i) {
        bank->noteOn(100 + 10 * static_cast<float>(i), 0);
        literal[i].noteOn(100 + 10 * static_cast<float>(i), 0);
    }
    bank->noteOn(1000, 0); // one too many, which is dropped
    std::vector<float> output(2 * 44200);
    std::vector<float> expected = output;
    bank->render(output.data(), 44200);
    for (ReferenceVoice& voice : literal) {
        voice.render<ReferenceVoice::ownTanh>(expected.data(), 44200);
    }
    EXPECT_EQ(std::memcmp(output.data(), expected.data(), 4 * output.size()), 0);
}

INSTANTIATE_TEST_SUITE_P(Levels, VoiceKernelTest,
                         testing::Values(VoiceKernel::Level::scalar, VoiceKernel::Level::sse2,
                                         VoiceKernel::Level::avx2));
