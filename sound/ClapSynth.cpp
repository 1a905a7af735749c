// SPDX-License-Identifier: Zlib
#include "sound/ClapSynth.h"

#include "base/EnvelopeShape.h"
#include "base/Noise.h"
#include "sound/DrumRendering.h"

static constexpr float envelopeStep = 0.00018140589f; // 8 / 44100 a sample
static constexpr float gain = 0.15f;

void ClapSynth::trigger(bool on, std::int32_t offset, bool alternate) {
    active = on;
    if (!on) return;
    sampleOffset = offset;
    envelope = 1;
    bursts = alternate ? 2 : 4;
    coefficient = alternate ? 0.999f : 0.1f;
}

void ClapSynth::render(float* output, std::int32_t frames) {
    renderDrum(output, frames, sampleOffset, [this](float& sample) { return step(sample); });
}

bool ClapSynth::step(float& sample) {
    envelope -= envelopeStep;
    // The fewer bursts are left, the longer the next one is.
    const float threshold = static_cast<float>(bursts) * 0.5f * 0.025f + 0.925f;
    if (envelope < threshold && bursts > 0) {
        --bursts;
        envelope = 1;
    } else if (envelope <= 0) {
        trigger(false, 0, false);
        return false;
    }
    const float noise = noiseUnit();
    const float first = noise + coefficient * z1;
    z1 = noise;
    const float second = first + coefficient * z2;
    z2 = first;
    sample = second * envelopeShape(envelope, lateRise) * gain;
    return true;
}
