// SPDX-License-Identifier: Zlib
#pragma once

#include "sound/Synthesizer.h"

// A hi-hat: high-passed noise, 5512 samples long; the alternate hit keeps more low frequencies. The
// noise filter keeps its state from hit to hit.
class HatSynth : public Synthesizer {
public:
    void render(float* output, std::int32_t frames) override;
    void trigger(bool on, std::int32_t offset, bool alternate) override;
    bool isActive() const override { return active; }

private:
    bool step(float& sample);

    bool active = false;
    std::int32_t sampleOffset = 0;
    float envelope = 0;
    float z = 0;
    float coefficient = 1;
};
