// SPDX-License-Identifier: Zlib
#pragma once

#include "sound/Synthesizer.h"

// A hand clap: four rapid bursts of noise (two, and duller, in the alternate hit), then a decay of
// 5512 samples. The noise filter keeps its state from hit to hit.
class ClapSynth : public Synthesizer {
public:
    void render(float* output, std::int32_t frames) override;
    void trigger(bool on, std::int32_t offset, bool alternate) override;
    bool isActive() const override { return active; }

private:
    bool step(float& sample);

    bool active = false;
    std::int32_t sampleOffset = 0;
    std::int32_t bursts = 3; // how often the envelope still restarts
    float envelope = 0;
    float z1 = 0;
    float z2 = 0;
    float coefficient = 0.999f;
};
