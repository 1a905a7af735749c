// SPDX-License-Identifier: Zlib
// Fingerprints of the sound. They must be the same with every compiler, optimisation level,
// processor and C library. A test that fails prints the new fingerprint.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iomanip>
#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "base/Noise.h"
#include "game/PlayMusic.h"
#include "sound/AudioSingleton.h"
#include "sound/VoiceKernel.h"
#include "tests/support/Fingerprint.h"
#include "tools/Inspector.h"

// Values in the order of a patch file.
using Patch = std::array<float, 16>;
static constexpr Patch bass = {0.3f, 0.02f, 0.4f,  0,    1,    0.02f, 0.85f, 0.15f,
                               0,    1,     0.02f, 0.5f, 0.1f, 1.8f,  0.25f, 0.12f};
static constexpr Patch pad = {0.4f, 0.3f, 0.5f,  0,    0,     0.5f, 0.9f, 0.5f,
                              0,    1,    0.35f, 0.6f, 0.97f, 2,    2,    0.5f};
static constexpr Patch high = {0.5f, 0.07f, 0.55f,  0,     1,     0.012f, 0.55f, 0.35f,
                               0,    1,     0.012f, 0.98f, 0.14f, 1,      4,     0.25f};
static constexpr Patch steep = {1, 0.07f, 1,     1,    1,     0.75f, 1, -0.6f,
                                1, 0,     0.82f, 0.1f, 0.25f, 4,     1, 1};
static constexpr Patch abrupt = {0.5f, 0.1f, 0.9f, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0.05f, 3, 1, 0};
static constexpr Patch blowingUp = {0.2f, 1, 10,   0,    0,    0.1f, 0.5f, 1,
                                    0,    0, 0.1f, 0.5f, 0.1f, 2,    1,    0.3f};

static void expect(const Fingerprint& print, std::uint64_t golden, const std::string& what) {
    EXPECT_EQ(print.value(), golden) << what << ": 0x" << std::hex << print.value();
}

// Renders buffers that start silent until nothing is active.
static void renderWhole(Fingerprint& print, std::int32_t frames,
                        const std::function<bool()>& isActive,
                        const std::function<void(float*, std::int32_t)>& render) {
    std::vector<float> buffer(2 * static_cast<std::size_t>(frames));
    while (isActive()) {
        std::fill(buffer.begin(), buffer.end(), 0.0f);
        render(buffer.data(), frames);
        for (const float sample : buffer) print.add(sample);
    }
}

// Runs at each level; all have the same goldens.
class SoundGoldenTest : public testing::TestWithParam<VoiceKernel::Level>,
                        public AudioSingleton::Callback {
protected:
    void SetUp() override {
        if (GetParam() > VoiceStages::best()) {
            GTEST_SKIP() << "not supported by this processor or this build";
        }
        VoiceKernel::setLevel(GetParam());
    }
    void TearDown() override { VoiceKernel::setLevel(VoiceStages::best()); }

    static void give(const Patch& patch, SimpleSynth& voice) {
        for (std::size_t i = 0; i < patch.size(); ++i) {
            const auto index = static_cast<std::int32_t>(i);
            voice.setParameter(voice.parameterName(index), patch[i], true);
        }
    }

    // Through a file, as in the game.
    static void give(const Patch& patch, AudioSingleton& sound, std::size_t bank) {
        std::string path = testing::TempDir() + "SoundGoldenTest.XXXXXX";
        close(mkstemp(path.data()));
        std::ofstream file(path);
        file << std::string(22, '\n') << "static const int values = 16;\n\n{\n";
        for (const float value : patch) file << std::setprecision(9) << value << "f,\n";
        file << "};\n";
        file.close();
        sound.loadPatch(bank, path);
        std::remove(path.c_str());
    }

    void onBar() override { music.onBar(*sound, ++bars % 4 == 0 ? 0.5f : 0.51f); }

    std::unique_ptr<AudioSingleton> sound;
    PlayMusic music;
    int bars = 0;
};

// Rounds of notes, each note on a voice of its own in a bank. A second round starts with the state
// that the first one left in the voices.
TEST_P(SoundGoldenTest, Notes) {
    using Pitches = std::vector<float>;
    static const Pitches tuned = {27.5f, 55,   110,  220.5f, 440,  440.1f,
                                  700,   1000, 1250, 1400,   1541, 3000};
    static const Pitches absurd = {-440, -1e9f, 1e9f, 44101, HUGE_VALF, std::nanf("")};
    const struct {
        const char* name;
        Patch patch;
        std::vector<Pitches> rounds;
        std::uint64_t golden;
    } cases[] = {
        {"bass", bass, {tuned}, 0xa3acf84aea3788ad},
        {"pad", pad, {tuned}, 0xb0bdf4eb3c0e7823},
        {"high", high, {tuned}, 0xeec7498a39306fe5},
        {"steep", steep, {tuned}, 0x21393a2f068d6ad7},
        {"abrupt", abrupt, {tuned}, 0xae05f2c2ccf23d59},
        {"blowing up", blowingUp, {tuned}, 0xaa31e64b70c40e65},
        {"absurd pitches", bass, {absurd, Pitches(6, 100)}, 0xa450ac22012642e7},
    };
    for (const auto& known : cases) {
        std::array<SimpleSynth, SimpleSynth::bankSize> voices;
        for (SimpleSynth& voice : voices) give(known.patch, voice);
        Fingerprint print;
        for (const Pitches& pitches : known.rounds) {
            for (std::size_t i = 0; i < pitches.size(); ++i) {
                voices[i].noteOn(pitches[i], static_cast<std::int32_t>(i * i));
            }
            const auto isSounding = [&] {
                return std::any_of(voices.begin(), voices.end(),
                                   [](const SimpleSynth& voice) { return voice.isActive(); });
            };
            renderWhole(print, 100, isSounding, [&](float* output, std::int32_t frames) {
                SimpleSynth::renderAll(voices, output, frames);
            });
        }
        expect(print, known.golden, known.name);
    }
}

// A minute of a play's music, slow in every fourth bar, with both sounds of each drum, notes on the
// other track, and a thump. The length of the buffers changes the sound: it decides which voice
// draws which noise, and moves some notes by a sample.
TEST_P(SoundGoldenTest, AMinuteOfMusic) {
    const struct {
        std::int32_t frames;
        std::uint64_t golden;
    } cases[] = {{55, 0xd25a98180979c4fd}, {512, 0x54ac94c391bdd069}};
    for (const auto& known : cases) {
        sound = Inspector::makeSound();
        music = PlayMusic();
        bars = 0;
        noiseSeed() = 1;
        std::size_t bank = 0;
        for (const Patch& patch : {bass, pad, high, steep, abrupt}) give(patch, *sound, bank++);
        sound->setPitches({220, 247.5f, 275, 330, 371.25f, 412.5f, 110, 55});
        for (std::int32_t step = 0; step < AudioSingleton::steps; ++step) {
            if (step % 8 == 3) sound->toggleStep(3, step, 1);
            if (step % 4 == 0) sound->toggleStep(4, step, step / 8);
            if (step % 8 == 4) sound->toggleStep(5, step, step / 8);
            if (step % 2 == 0) sound->toggleStep(6, step, step / 2);
            if (step % 8 == 0) sound->toggleStep(7, step, step / 8);
        }
        music.start(*sound);
        sound->setCallback(this);
        sound->playBom();
        std::int32_t left = 60 * 44100;
        Fingerprint print;
        renderWhole(
            print, known.frames, [&] { return left > 0; },
            [&](float* output, std::int32_t frames) {
                sound->process(output, frames);
                left -= frames;
            });
        expect(print, known.golden, "buffers of " + std::to_string(known.frames));
        sound->setCallback(nullptr);
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, SoundGoldenTest,
                         testing::Values(VoiceKernel::Level::scalar, VoiceKernel::Level::sse2,
                                         VoiceKernel::Level::avx2));

// The highest frequency of a row belongs to it. The notes of the other tests use all rows.
TEST(SoundGolden, RowsOfWaveTables) {
    const WaveTables& tables = WaveTables::instance();
    for (const float highest : {440.f, 660.f, 880.f, 1100.f, 1320.f, 1540.f}) {
        const float above = std::nextafter(highest, 2000.0f);
        EXPECT_EQ(&tables.sawRow(above) - &tables.sawRow(highest), 1) << highest;
        EXPECT_EQ(&tables.squareRow(above) - &tables.squareRow(highest), 1) << highest;
    }
}
