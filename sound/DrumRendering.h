// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

// The sample loop of all drums, from the offset to the end of the buffer. `step(sample)` computes
// the next sample, or returns false when the hit is over. The offset applies to one buffer only.
template <typename Step>
void renderDrum(float* output, std::int32_t frames, std::int32_t& sampleOffset, Step step) {
    for (std::int32_t i = sampleOffset; i < frames; ++i) {
        float sample = 0;
        if (!step(sample)) break;
        output[2 * i] += sample;
        output[2 * i + 1] += sample;
    }
    sampleOffset = 0;
}
