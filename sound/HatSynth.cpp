// SPDX-License-Identifier: Zlib
#include "sound/HatSynth.h"

#include "base/EnvelopeShape.h"
#include "base/Noise.h"
#include "sound/DrumRendering.h"

static constexpr float envelopeStep = 0.00018140589f; // 8 / 44100 a sample
static constexpr float gain = 0.33f;

void HatSynth::trigger(bool on, std::int32_t offset, bool alternate) {
    active = on;
    if (!on) return;
    sampleOffset = offset;
    envelope = 1;
    coefficient = alternate ? 0.7f : 1.0f;
}

void HatSynth::render(float* output, std::int32_t frames) {
    renderDrum(output, frames, sampleOffset, [this](float& sample) { return step(sample); });
}

bool HatSynth::step(float& sample) {
    envelope -= envelopeStep;
    if (envelope <= 0) {
        trigger(false, 0, false);
        return false;
    }
    const float noise = noiseUnit();
    const float high = noise - coefficient * z;
    z = noise;
    sample = high * envelopeShape(envelope, lateRise) * gain;
    return true;
}
