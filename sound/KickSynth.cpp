// SPDX-License-Identifier: Zlib
#include "sound/KickSynth.h"

#include <cmath>

#include "base/EnvelopeShape.h"
#include "sound/DrumRendering.h"
#include "sound/HyperbolicTangent.h"

static constexpr float envelopeStep = 0.00018140589f; // 8 / 44100 a sample, for 1/8 s
static constexpr float halfTurn = 3.1415927f;
static constexpr float drive = 0.33f; // factor of half a turn

// pi f / 44100 for a frequency f.
static constexpr double normalAngle = 0.01046003494411707;     // 146.83 hertz
static constexpr double alternateAngle = 0.007836172357201576; // 110 hertz
static constexpr double endAngle = 0.0035618965048342943;      // 50 hertz

static float coefficientOf(double angle) {
    return 2 * static_cast<float>(std::sin(angle));
}

KickSynth::KickSynth()
    : coefficient(coefficientOf(normalAngle)), startCoefficients{coefficientOf(normalAngle),
                                                                 coefficientOf(alternateAngle)},
      endCoefficient(coefficientOf(endAngle)) {}

void KickSynth::trigger(bool on, std::int32_t offset, bool alternate) {
    active = on;
    if (!on) return;
    sampleOffset = offset;
    envelope = 1;
    oscX = 1;
    oscY = 0;
    startIndex = alternate ? 1 : 0;
    coefficient = startCoefficients[startIndex];
}

void KickSynth::render(float* output, std::int32_t frames) {
    renderDrum(output, frames, sampleOffset, [this](float& sample) { return step(sample); });
}

bool KickSynth::step(float& sample) {
    envelope -= envelopeStep;
    if (envelope <= 0) {
        trigger(false, 0, false);
        return false;
    }
    oscX -= coefficient * oscY;
    oscY += coefficient * oscX;
    sample = envelopeShape(envelope, earlyRise) * hyperbolicTangent(oscY * halfTurn * drive);
    coefficient = startCoefficients[startIndex] * envelope + (1 - envelope) * endCoefficient;
    // In the first cycle this brings the amplitude to about 0.7; later it only prevents growth.
    const float size = std::fabs(oscX) + std::fabs(oscY);
    if (size > 1) {
        const float shrink = 1 / size;
        oscX *= shrink;
        oscY *= shrink;
    }
    return true;
}
