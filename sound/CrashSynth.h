// SPDX-License-Identifier: Zlib
#pragma once

#include <array>

#include "sound/Synthesizer.h"

// A crash cymbal: high-passed noise, mixed more and more with its own echo from a short feedback
// delay. A hit lasts half a second, the alternate hit a third. The filter and the delay keep their
// state from hit to hit.
class CrashSynth : public Synthesizer {
public:
    void render(float* output, std::int32_t frames) override;
    void trigger(bool on, std::int32_t offset, bool alternate) override;
    bool isActive() const override { return active; }

private:
    bool step(float& sample);
    float readDelay() const;

    bool active = false;
    std::int32_t sampleOffset = 0;
    float envelope = 0;
    float z = 0;
    float coefficient = 0.99f; // also shows which hit this is
    std::array<float, 64> delayLine = {};
    std::int32_t writeIndex = 0;
};
