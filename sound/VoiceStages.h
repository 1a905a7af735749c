// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <span>

#include "sound/VoiceLanes.h"

// The vector instructions that render steady voices side by side; VoiceKernel says when. One source
// file for x86-64, one for other processors and builds without such instructions.
class VoiceStages {
public:
    enum class Level { scalar, sse2, avx2 };

    // The best level that this build has and this processor runs.
    static Level best();

    // How many of so many steady voices to render side by side next; 0 if voice by voice is faster.
    static std::size_t width(Level level, std::size_t voices);

    // Renders so many frames, a block at most, of the first `width` lanes (a width from above):
    // moves their state on and writes their sound, the same bits as SimpleSynth::render. A filter
    // that blows up does not heal here: a y4 that is not finite at the end says that it did, and
    // its lane is worthless.
    static void run(Level level, std::size_t width, VoiceLanes& lanes, std::size_t frames);

    // Adds so many samples of each sound, in order, to both channels of interleaved stereo frames.
    static void add(std::span<const float* const> sounds, float* output, std::size_t frames);

private:
    template <std::size_t lanes>
    struct Vectors;

    template <std::size_t lanes, std::size_t registers>
    class Pass;
};
