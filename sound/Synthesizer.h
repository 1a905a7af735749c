// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

// A one-shot drum voice: trigger starts it, render adds it to the buffer until its envelope has run
// out, and then it ends by itself. Audio thread only, after it is built. 44100 samples a second.
class Synthesizer {
public:
    virtual ~Synthesizer() = default;

    // Adds the voice to `frames` stereo frames (2 x frames floats, interleaved), the same on both
    // channels. To be called while it is active.
    virtual void render(float* output, std::int32_t frames) = 0;

    // With `on`, starts a hit, cutting off one that sounds, at a sample of the next rendered
    // buffer; the alternate hit is the voice's second sound. Without, ends the voice at once.
    virtual void trigger(bool on, std::int32_t sampleOffset, bool alternate) = 0;

    virtual bool isActive() const = 0;
};
