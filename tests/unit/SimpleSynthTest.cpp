// SPDX-License-Identifier: Zlib
#include "sound/SimpleSynth.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

static std::vector<float> render(SimpleSynth& voice, std::int32_t frames, std::int32_t buffer) {
    std::vector<float> output(2 * static_cast<std::size_t>(frames));
    for (std::int32_t at = 0; at < frames; at += buffer) {
        voice.render(&output[2 * static_cast<std::size_t>(at)], std::min(buffer, frames - at));
    }
    return output;
}

static std::int32_t soundingFrames(SimpleSynth& voice) {
    std::int32_t frames = 0;
    float frame[2] = {};
    for (; voice.isActive(); ++frames) voice.render(frame, 1);
    return frames - 1; // the last one only ended the note
}

// A sample at the note's very end is its last one; one behind the end, by a hair, is not.
TEST(SimpleSynth, ANoteEndsBehindItsLength) {
    float seconds = 0;
    for (std::int32_t frames = 1; frames <= 3000; ++frames) {
        seconds += 0.000022675737f;
        if (frames % 100 != 0) continue;
        SimpleSynth voice;
        voice.setParameter("noteLength", seconds / 2, true);
        voice.noteOn(440, 0);
        EXPECT_EQ(soundingFrames(voice), frames);
        voice.setParameter("noteLength", std::nextafter(seconds, 0.0f) / 2, true);
        voice.noteOn(440, 0);
        EXPECT_EQ(soundingFrames(voice), frames - 1);
    }
}

TEST(SimpleSynth, ANoteWaitsForItsSampleAcrossBuffers) {
    SimpleSynth voice;
    voice.setParameter("attackTime", 0, true);
    voice.noteOn(440, 0);
    const std::vector<float> note = render(voice, 400, 400);
    const std::pair<std::int32_t, std::size_t> begins[] = {{0, 0},   {1, 0},   {2, 1},
                                                           {50, 49}, {51, 50}, {300, 299}};
    for (const auto& [offset, first] : begins) {
        for (const std::int32_t buffer : {1, 50, 400}) {
            SimpleSynth fresh;
            fresh.setParameter("attackTime", 0, true);
            fresh.noteOn(440, offset);
            std::vector<float> expected(2 * first);
            expected.insert(expected.end(), note.begin(), note.end());
            expected.resize(800);
            EXPECT_EQ(render(fresh, 400, buffer), expected) << offset << " in " << buffer;
        }
    }
}

TEST(SimpleSynth, HasSixteenParametersByNameAndByIndex) {
    static constexpr const char* names[] = {
        "waveAmount",        "filterCutoff",       "filterRes",
        "filterAttackCurve", "filterReleaseCurve", "filterAttackTime",
        "filterReleaseTime", "filterEnvAmount",    "attackCurve",
        "releaseCurve",      "attackTime",         "releaseTime",
        "noteLength",        "distGain",           "octave",
        "detunedSawAmount"};
    static constexpr float defaults[] = {0, 0.5f, 0,     0,    0,    0.25f, 0.5f, 0.01f,
                                         0, 0,    0.25f, 0.5f, 0.5f, 1,     1,    0};
    SimpleSynth voice;
    ASSERT_EQ(voice.parameterCount(), 16);
    for (std::int32_t i = 0; i < 16; ++i) {
        const std::string name = names[i];
        EXPECT_EQ(voice.parameterName(i), name);
        EXPECT_EQ(voice.parameter(i), defaults[i]) << name;
        const bool isFlag = name.ends_with("Curve");
        for (const float value : {0.75f, 0.5f, 0.51f, -3.0f}) {
            voice.setParameter(name, value, true);
            EXPECT_EQ(voice.parameter(i), isFlag ? (value > 0.5f ? 1 : 0) : value) << name;
        }
        voice.setParameter(name, defaults[i], true);
    }
    for (const char* unknown : {"", "octaves", "Octave", "octave "}) {
        voice.setParameter(unknown, 7, true);
    }
    for (std::int32_t i = 0; i < 16; ++i) EXPECT_EQ(voice.parameter(i), defaults[i]);
    for (const std::int32_t outside : {-1, 16, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(voice.parameter(outside), 0);
        EXPECT_EQ(voice.parameterName(outside), "");
    }
}

TEST(SimpleSynth, ControlPositionsAreMapped) {
    const struct {
        std::int32_t index;
        float position;
        float value;
    } cases[] = {{1, 0, 0},     {1, 1, 1},           {1, 0.5f, 0.3f},    {12, 0, 0.05f},
                 {12, 1, 1},    {13, 0, 1},          {13, 1, 4},         {14, 0, 4},
                 {14, 0.9f, 2}, {14, 1, 2},          {14, 1.9f, 1},      {14, 2, 1},
                 {14, 3, 0.5f}, {14, 3.9f, 0.25f},   {14, 4, 0.25f},     {3, 0.5f, 0},
                 {3, 0.51f, 1}, {7, -0.25f, -0.25f}, {0, 0.125f, 0.125f}};
    SimpleSynth voice;
    for (const auto& known : cases) {
        voice.setParameter(voice.parameterName(known.index), known.position, false);
        EXPECT_FLOAT_EQ(voice.parameter(known.index), known.value)
            << known.index << " at " << known.position;
    }
}
