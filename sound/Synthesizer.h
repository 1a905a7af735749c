// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

// A one-shot drum voice: trigger starts it, and render adds it to the buffer until its envelope
// runs out. Built on the main thread, then used on the audio thread only. 44100 samples a second.
class Synthesizer {
public:
    virtual ~Synthesizer() = default;

    // Adds the voice to `frames` stereo frames (2 x frames floats, interleaved), the same on both
    // channels. Call it only while the voice is active.
    virtual void render(float* output, std::int32_t frames) = 0;

    // With `on`, starts a hit at a sample of the next rendered buffer, and cuts off a hit that
    // sounds; the alternate hit is the voice's second sound. Without `on`, ends the voice at once.
    virtual void trigger(bool on, std::int32_t sampleOffset, bool alternate) = 0;

    virtual bool isActive() const = 0;
};
