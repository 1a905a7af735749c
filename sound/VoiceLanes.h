// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "sound/WaveTables.h"

// Up to 16 steady voices side by side, a lane each, as VoiceStages takes them: the state that a
// block moves on, what it holds fixed, and where the sound goes. Names and units as in SimpleSynth.
struct VoiceLanes {
    static constexpr std::size_t most = 16;
    static constexpr std::size_t blockFrames = 64; // at most

    // A number of each voice, aligned for the widest vectors in use.
    template <typename Number>
    struct alignas(32) Lanes : std::array<Number, most> {};

    struct Envelope {
        Lanes<float> attackEnd;
        Lanes<float> releaseStart; // infinite without a release
        Lanes<float> releaseLength;
        Lanes<float> attackBend;
        Lanes<float> releaseBend;
    };

    Lanes<float> envelopePosition;
    Lanes<float> phase1;
    Lanes<float> phase2;
    Lanes<double> oldX; // the filter; what went into the other stages before is y1 to y3
    Lanes<double> y1;
    Lanes<double> y2;
    Lanes<double> y3;
    Lanes<double> y4;

    Envelope level;
    Envelope filter;
    Lanes<float> filterEnvAmount;
    Lanes<float> cutoffBase; // hertz
    Lanes<float> increment1; // 0 to the length of a row
    Lanes<float> increment2;
    Lanes<std::int32_t> firstRead; // of the voice's rows in WaveTables
    Lanes<float> waveAmount;
    Lanes<float> detunedSawAmount;
    Lanes<double> resonance;
    Lanes<float> distGain;

    // A voice's block: blockFrames floats of its own, a sample a frame.
    Lanes<float*> sound;
};
