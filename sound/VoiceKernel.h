// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "sound/SimpleSynth.h"
#include "sound/VoiceLanes.h"
#include "sound/VoiceStages.h"

// Renders the voices of a bank together, several times faster than one by one and with the same
// bits. The terms:
//   block   up to 64 frames; a voice that neither waits nor comes near its end in a block is steady
//   lane    the place of a steady voice in vectors that hold one number per voice (VoiceLanes)
//   chunk   up to 16 frames of a block, the unit that goes through the stages of a voice
// Steady voices are rendered side by side (VoiceStages). Every other voice, and a voice whose
// filter blows up in a block and must recover, goes through SimpleSynth::render for that block. The
// blocks are added to the output in the order of the voices. Audio thread; nothing is allocated.
class VoiceKernel {
public:
    using Level = VoiceStages::Level;

    // Implements SimpleSynth::renderAll.
    static void render(std::span<SimpleSynth, SimpleSynth::bankSize> bank, float* output,
                       std::int32_t frames);

    // For tests and measurements: uses this level, or the processor's best if that is lower.
    static void setLevel(Level level);

private:
    using Voices = std::span<SimpleSynth* const>; // those that sound
    using Block = std::array<float, VoiceLanes::blockFrames>;

    static void renderBlock(Voices voices, float* output, std::size_t frames);
    static bool isSteady(const SimpleSynth& voice, std::size_t frames);
    static void load(VoiceLanes& lanes, std::size_t lane, const SimpleSynth& voice);
    static void loadEnvelope(VoiceLanes::Envelope& lanes, std::size_t lane,
                             const SimpleSynth::Envelope& envelope);
    static bool unload(const VoiceLanes& lanes, std::size_t lane, SimpleSynth& voice);
};
