// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "sound/SimpleSynth.h"
#include "tests/ReferenceVoice.h"

// The work by which voices are measured: notes of 2 seconds, each of its own pitch, on a patch that
// uses all that a voice has. A bank of the program's voices, and the same of literal ones.
class VoiceBanks {
public:
    static constexpr std::int32_t noteFrames = 88000; // a little less than a note

    explicit VoiceBanks(std::size_t count) : voices(count), literal(count) {}

    // Starts the notes of all voices from the beginning.
    void start() {
        for (std::size_t i = 0; i < voices.size(); ++i) {
            const float frequency = 100 + 7.3f * static_cast<float>(i); // hertz
            literal[i].patch = {.waveAmount = 0.4f,
                                .filterCutoff = 0.3f,
                                .filterRes = 0.5f,
                                .filterEnvAmount = 0.5f,
                                .noteLength = 1,
                                .distGain = 2,
                                .detunedSawAmount = 0.5f};
            literal[i].givePatch(voices[i]);
            literal[i].noteOn(frequency, 0);
            voices[i].noteOn(frequency, 0);
        }
    }

    void render(float* output, std::int32_t frames) {
        SimpleSynth::renderAll(voices, output, frames);
    }

    void renderLiteral(float* output, std::int32_t frames) {
        for (ReferenceVoice& voice : literal) {
            voice.render<ReferenceVoice::libraryTanh>(output, frames);
        }
    }

private:
    std::vector<SimpleSynth> voices;
    std::vector<ReferenceVoice> literal;
};
