// SPDX-License-Identifier: Zlib
#include "sound/CrashSynth.h"

#include "base/EnvelopeShape.h"
#include "base/Noise.h"
#include "sound/DrumRendering.h"

static constexpr float envelopeStep = 0.00006802721f; // 3 / 44100 a sample
static constexpr float gain = 0.33f;
static constexpr float feedback = 0.8f;
static constexpr float delay = 0.1f; // samples behind the write position; below 1
static constexpr float normalCoefficient = 0.9f;
static constexpr float alternateCoefficient = 0.999f;
static constexpr float normalStart = 1.5f; // of the envelope: the normal hit is longer

void CrashSynth::trigger(bool on, std::int32_t offset, bool alternate) {
    active = on;
    if (!on) return;
    sampleOffset = offset;
    envelope = alternate ? 1.0f : normalStart;
    coefficient = alternate ? alternateCoefficient : normalCoefficient;
}

void CrashSynth::render(float* output, std::int32_t frames) {
    renderDrum(output, frames, sampleOffset, [this](float& sample) { return step(sample); });
}

bool CrashSynth::step(float& sample) {
    envelope -= envelopeStep;
    if (envelope <= 0) {
        trigger(false, 0, false);
        return false;
    }
    const float level = coefficient == normalCoefficient ? envelope / normalStart : envelope;
    const float noise = noiseUnit();
    const float high = noise - coefficient * z;
    z = noise;
    float& written = delayLine[static_cast<std::size_t>(writeIndex)];
    written = high + readDelay() * feedback;
    const float mix = high + envelopeShape(1 - level, earlyRise) * written;
    writeIndex = (writeIndex + 1) % static_cast<std::int32_t>(delayLine.size());
    sample = envelopeShape(level, lateRise) * mix * gain;
    return true;
}

// Interpolates between two samples of the delay line. The position is rounded toward zero, so at
// the start of the line it does not wrap to the end.
float CrashSynth::readDelay() const {
    const auto read = static_cast<std::size_t>(static_cast<float>(writeIndex) - delay);
    return (1 - delay) * delayLine[read] + delay * delayLine[read + 1];
}
