// SPDX-License-Identifier: Zlib
#pragma once

#include "sound/Synthesizer.h"

// A hand clap: a rapid run of noise bursts, four or, in the alternate and duller hit, two, and then
// a decay of 5512 samples. The noise filter keeps what the last hit left in it.
class ClapSynth : public Synthesizer {
public:
    void render(float* output, std::int32_t frames) override;
    void trigger(bool on, std::int32_t offset, bool alternate) override;
    bool isActive() const override { return active; }

private:
    bool step(float& sample);

    bool active = false;
    std::int32_t sampleOffset = 0;
    std::int32_t bursts = 3; // restarts of the envelope that are left
    float envelope = 0;
    float z1 = 0;
    float z2 = 0;
    float coefficient = 0.999f;
};
