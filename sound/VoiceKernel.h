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
// bits. It works in blocks: a voice that is steady all through a block, neither waiting nor near
// its end, is rendered side by side with others (VoiceStages); every other voice, and one whose
// filter blew up on the way and has to heal, goes through SimpleSynth::render for this block. The
// blocks are added up in the order of the voices. Audio thread; nothing is allocated.
class VoiceKernel {
public:
    using Level = VoiceStages::Level;

    // What SimpleSynth::renderAll does.
    static void render(std::span<SimpleSynth> voices, float* output, std::int32_t frames);

    // For tests and measurements: another level than the processor's best, which is the highest.
    static void setLevel(Level level);

private:
    static constexpr std::size_t mostVoices = 32; // together

    using Block = std::array<float, VoiceLanes::blockFrames>;

    static void renderBlocks(std::span<SimpleSynth* const> voices, float* output,
                             std::size_t frames);
    static void renderBlock(std::span<SimpleSynth* const> voices, float* output,
                            std::size_t frames);
    static bool isSteady(const SimpleSynth& voice, std::size_t frames);
    static void load(VoiceLanes& lanes, std::size_t lane, const SimpleSynth& voice);
    static void loadEnvelope(VoiceLanes::Envelope& lanes, std::size_t lane,
                             const SimpleSynth::Envelope& envelope);
    static bool unload(const VoiceLanes& lanes, std::size_t lane, SimpleSynth& voice);
};
