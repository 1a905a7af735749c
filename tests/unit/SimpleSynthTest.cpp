// SPDX-License-Identifier: Zlib
#include "sound/SimpleSynth.h"

#include <algorithm>
#include <cmath>
#include <iterator>
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

// A sample exactly at the end of a note still belongs to it.
TEST(SimpleSynth, ANoteLastsAsLongAsItsPatchSays) {
    SimpleSynth voice;
    const auto soundingFrames = [&voice](float seconds) {
        voice.setParameter("noteLength", seconds / 2, true);
        voice.noteOn(440, 0);
        std::int32_t frames = -1; // the last one only ends the note
        for (; voice.isActive(); ++frames) render(voice, 1, 1);
        return frames;
    };
    float seconds = 0;
    for (int i = 0; i < 1000; ++i) seconds += 0.000022675737f;
    EXPECT_EQ(soundingFrames(seconds), 1000);
    EXPECT_EQ(soundingFrames(std::nextafter(seconds, 0.0f)), 999);
}

TEST(SimpleSynth, ANoteWaitsForItsSampleAcrossBuffers) {
    const auto play = [](std::int32_t offset, std::int32_t buffer) {
        SimpleSynth voice;
        voice.setParameter("attackTime", 0, true);
        voice.noteOn(440, offset);
        return render(voice, 400, buffer);
    };
    const std::vector<float> note = play(0, 400);
    const std::pair<std::int32_t, std::size_t> starts[] = {{1, 0}, {2, 1}, {50, 49}, {300, 299}};
    for (const auto& [offset, first] : starts) {
        std::vector<float> expected(2 * first);
        expected.insert(expected.end(), note.begin(), note.end());
        expected.resize(note.size());
        for (const std::int32_t buffer : {1, 50, 400}) {
            EXPECT_EQ(play(offset, buffer), expected) << offset << " in " << buffer;
        }
    }
}

TEST(SimpleSynth, ParametersHaveNamesDefaultsAndMappings) {
    const struct {
        const char* name;
        float start;
        std::vector<std::pair<float, float>> mapped; // control positions and their values
    } parameters[] = {
        {"waveAmount", 0, {{0.125f, 0.125f}}},
        {"filterCutoff", 0.5f, {{0, 0}, {0.5f, 0.3f}, {1, 1}}},
        {"filterRes", 0, {}},
        {"filterAttackCurve", 0, {{0.5f, 0}, {0.51f, 1}}},
        {"filterReleaseCurve", 0, {}},
        {"filterAttackTime", 0.25f, {}},
        {"filterReleaseTime", 0.5f, {}},
        {"filterEnvAmount", 0.01f, {{-0.25f, -0.25f}}},
        {"attackCurve", 0, {}},
        {"releaseCurve", 0, {}},
        {"attackTime", 0.25f, {}},
        {"releaseTime", 0.5f, {}},
        {"noteLength", 0.5f, {{0, 0.05f}, {1, 1}}},
        {"distGain", 1, {{0, 1}, {1, 4}}},
        {"octave", 1, {{0, 4}, {0.9f, 2}, {1.9f, 1}, {2.9f, 0.5f}, {3.9f, 0.25f}}},
        {"detunedSawAmount", 0, {}},
    };
    SimpleSynth voice;
    ASSERT_EQ(voice.parameterCount(), std::ssize(parameters));
    voice.setParameter("octaves", 7, true); // unknown
    std::int32_t index = 0;
    for (const auto& [name, start, mapped] : parameters) {
        EXPECT_EQ(voice.parameterName(index), name);
        EXPECT_EQ(voice.parameter(index), start) << name;
        for (const float stored : {0.5f, 0.51f, -3.0f}) {
            voice.setParameter(name, stored, true);
            const bool isFlag = std::string(name).ends_with("Curve");
            EXPECT_EQ(voice.parameter(index), isFlag ? stored == 0.51f : stored) << name;
        }
        for (const auto& [position, value] : mapped) {
            voice.setParameter(name, position, false);
            EXPECT_FLOAT_EQ(voice.parameter(index), value) << name << " at " << position;
        }
        ++index;
    }
    for (const std::int32_t outside : {-1, 16}) {
        EXPECT_EQ(voice.parameter(outside), 0);
        EXPECT_EQ(voice.parameterName(outside), "");
    }
}
