// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <span>

#include "sound/VoiceLanes.h"

// Renders steady voices side by side with vector instructions, for VoiceKernel, which defines the
// terms. One source file is for x86-64, the other for builds without vector instructions.
class VoiceStages {
public:
    enum class Level { scalar, sse2, avx2 };

    // The best level that this build contains and this processor supports.
    static Level best();

    // With this many steady voices left: how many lanes to use next, or 0 if rendering the voices
    // one by one is faster.
    static std::size_t width(Level level, std::size_t voices);

    // Renders up to a block of frames of the first `width` lanes (a result of the operation above):
    // advances their state and writes their sound, the same bits as SimpleSynth::render. A filter
    // that blows up does not recover here: if y4 is not finite afterwards, discard the lane.
    static void run(Level level, std::size_t width, VoiceLanes& lanes, std::size_t frames);

    // Adds the first `frames` samples of each sound, in order, to both channels of interleaved
    // stereo frames.
    static void add(std::span<const float* const> sounds, float* output, std::size_t frames);

private:
    template <std::size_t lanes>
    struct Vectors;

    template <std::size_t lanes, std::size_t registers>
    class Renderer;
};
