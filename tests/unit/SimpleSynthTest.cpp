// SPDX-License-Identifier: Zlib
#include "sound/SimpleSynth.h"

#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

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
    std::int32_t index = 0;
    for (const auto& [name, start, mapped] : parameters) {
        EXPECT_EQ(voice.parameterName(index), name);
        EXPECT_EQ(voice.parameter(index), start) << name;
        for (const auto& [position, value] : mapped) {
            voice.setParameter(name, position, false);
            EXPECT_FLOAT_EQ(voice.parameter(index), value) << name << " at " << position;
        }
        ++index;
    }
    EXPECT_EQ(voice.parameterName(-1) + voice.parameterName(index), "");
}

TEST(SimpleSynth, ASampleExactlyAtTheEndBelongsToTheNote) {
    SimpleSynth voice;
    voice.setParameter("noteLength", 0.000022675737f / 2, true);
    voice.noteOn(440, 0);
    for (const bool sounds : {true, false}) {
        float output[2] = {};
        voice.render(output, 1);
        EXPECT_EQ(voice.isActive(), sounds);
    }
}
