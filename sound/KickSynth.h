// SPDX-License-Identifier: Zlib
#pragma once

#include "sound/Synthesizer.h"

// A kick drum: an oscillator that sweeps from 146.83 hertz (110 in the alternate hit) down to 50,
// through a tanh. A hit lasts 5512 samples.
class KickSynth : public Synthesizer {
public:
    KickSynth();

    void render(float* output, std::int32_t frames) override;
    void trigger(bool on, std::int32_t offset, bool alternate) override;
    bool isActive() const override { return active; }

private:
    bool step(float& sample);

    bool active = false;
    std::int32_t sampleOffset = 0;
    float envelope = 0;
    float oscX = 1;
    float oscY = 0; // the sine-like one
    float coefficient;
    float startCoefficients[2]; // normal, alternate
    std::int32_t startIndex = 0;
    float endCoefficient;
};
