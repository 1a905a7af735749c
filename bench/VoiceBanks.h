// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "sound/ClapSynth.h"
#include "sound/CrashSynth.h"
#include "sound/HatSynth.h"
#include "sound/KickSynth.h"
#include "sound/SimpleSynth.h"
#include "tests/support/ReferenceVoice.h"

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

// All that can sound at once: five banks and four drums.
class FullSound {
public:
    void start() { banks.start(); }

    void render(float* output, std::int32_t frames) {
        banks.render(output, frames);
        for (const auto& drum : drums) {
            if (!drum->isActive()) drum->trigger(true, 0, false);
            drum->render(output, frames);
        }
    }

private:
    VoiceBanks banks = VoiceBanks(160);
    std::array<std::unique_ptr<Synthesizer>, 4> drums = {
        std::make_unique<KickSynth>(), std::make_unique<ClapSynth>(), std::make_unique<HatSynth>(),
        std::make_unique<CrashSynth>()};
};
