// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "sound/WaveTables.h"

// The input and output of VoiceStages: up to 16 voices side by side, each in a lane. First the
// state that a block advances, then what it leaves unchanged, then where the sound goes. Names and
// units as in SimpleSynth.
struct VoiceLanes {
    static constexpr std::size_t most = 16;
    static constexpr std::size_t blockFrames = 64; // at most

    // One number for each voice, aligned for the widest vectors.
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
    Lanes<double> oldX; // the filter; its oldY1 to oldY3 equal y1 to y3
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

    // Where each voice's block goes: blockFrames floats, one for each frame.
    Lanes<float*> sound;
};
