// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

#include "sound/HyperbolicTangent.h"
#include "sound/SimpleSynth.h"
#include "sound/WaveTables.h"

// The pitched voice once more, written down step by step as it is meant, every sample by itself and
// nothing spared. The proofs hold the program's voices against it, in bits and in time. The tanh is
// the C library's, or the sound's own where the bits are to be equal.
class ReferenceVoice {
public:
    using Tanh = float (*)(float);

    static float libraryTanh(float x) { return std::tanh(x); }
    static float ownTanh(float x) { return hyperbolicTangent(x); }

    struct Patch {
        float waveAmount = 0;
        float filterCutoff = 0.5f;
        float filterRes = 0;
        float filterAttackCurve = 0;
        float filterReleaseCurve = 0;
        float filterAttackTime = 0.25f;
        float filterReleaseTime = 0.5f;
        float filterEnvAmount = 0.01f;
        float attackCurve = 0;
        float releaseCurve = 0;
        float attackTime = 0.25f;
        float releaseTime = 0.5f;
        float noteLength = 0.5f;
        float distGain = 1;
        float octave = 1;
        float detunedSawAmount = 0;
    };

    Patch patch;
    bool active = false;
    int healings = 0; // of the filter

    // The values in the order of the parameters.
    using Values = std::array<float, 16>;

    // Gives the patch to one of the program's voices.
    void givePatch(SimpleSynth& voice) const {
        std::int32_t index = 0;
        for (const float value : std::bit_cast<Values>(patch)) {
            voice.setParameter(voice.parameterName(index++), value, true);
        }
    }

    void noteOn(float frequency, std::int32_t sampleOffset) {
        frequency1 = patch.octave * frequency;
        frequency2 = frequency1 * 0.999f;
        sawRow = &WaveTables::instance().sawRow(frequency1);
        squareRow = &WaveTables::instance().squareRow(frequency1);
        envelopePosition = 0;
        waiting = true;
        waitSamples = sampleOffset;
        active = true;
    }

    template <Tanh tanh>
    void render(float* output, std::int32_t frames) {
        if (!active || frames < 1) return;
        const float length = 2 * patch.noteLength;
        const float attackEnd = patch.attackTime * 0.999f * length;
        const float releaseLength = (length - attackEnd) * patch.releaseTime;
        const float releaseStart = length - (releaseLength + attackEnd) + attackEnd;
        const float filterAttackEnd = patch.filterAttackTime * 0.999f * length;
        const float filterReleaseLength = (length - filterAttackEnd) * patch.filterReleaseTime;
        const float filterReleaseStart =
            length - (filterReleaseLength + filterAttackEnd) + filterAttackEnd;
        for (std::int32_t i = 0; i < frames; ++i) {
            if (waiting) {
                --waitSamples;
                if (waitSamples > 0) continue;
                waiting = false;
            }
            envelopePosition = envelopePosition + 0.000022675737f;
            const float t = envelopePosition;
            if (t > length) {
                active = false;
                return;
            }
            const float amplitude = envelope(t, attackEnd, releaseStart, releaseLength,
                                             patch.attackCurve, patch.releaseCurve);
            const float filterEnv =
                patch.filterEnvAmount * envelope(t, filterAttackEnd, filterReleaseStart,
                                                 filterReleaseLength, patch.filterAttackCurve,
                                                 patch.filterReleaseCurve);
            float mix = 0;
            if (std::isfinite(1024 / (44100.0f / frequency1)) &&
                std::isfinite(1024 / (44100.0f / frequency2))) {
                const float saw = read(*sawRow, phase1);
                const float square = read(*squareRow, phase1);
                mix = (1 - patch.waveAmount) * saw + patch.waveAmount * square;
                if (patch.detunedSawAmount > 0) {
                    mix = mix + patch.detunedSawAmount * read(*sawRow, phase2);
                }
                phase1 = advance(phase1, frequency1);
                phase2 = advance(phase2, frequency2);
            }
            const float base = patch.filterCutoff * 10975;
            float cutoff = 0;
            if (filterEnv >= 0) {
                cutoff = base + filterEnv * (11025 - base);
            } else {
                cutoff = base + filterEnv * base;
            }
            cutoff = cutoff + 50;
            setCutoffAndResonance(static_cast<double>(cutoff),
                                  static_cast<double>(patch.filterRes));
            const float y = process(mix);
            float out = tanh(patch.distGain * y) * amplitude * 0.5f;
            if (!std::isfinite(out)) out = 0;
            output[2 * i] += out;
            output[2 * i + 1] += out;
        }
    }

private:
    static float shape(float x, float k) { return x / ((x - 1) * k + x); }

    static float envelope(float t, float attackEnd, float releaseStart, float releaseLength,
                          float attackCurve, float releaseCurve) {
        if (t < attackEnd) {
            const float x = t / attackEnd;
            return attackCurve > 0.5f ? shape(x, -9) : shape(x, -0.33333337f);
        }
        if (t < releaseStart || releaseLength <= 0) return 1;
        const float x = (t - releaseStart) / releaseLength;
        return releaseCurve > 0.5f ? 1 - shape(x, -0.33333337f) : 1 - shape(x, -9);
    }

    static float read(const WaveTables::Row& row, float phase) {
        const auto i = static_cast<std::size_t>(phase);
        const float f = phase - static_cast<float>(i);
        return (1 - f) * row[i % 1024] + f * row[(i + 1) % 1024];
    }

    static float advance(float phase, float frequency) {
        phase = phase + 1024 / (44100.0f / frequency);
        if (phase > 1024) phase = phase - 1024;
        if (phase < 0 || phase > 1024) { // of a note that nobody hears
            phase = std::fmod(phase, 1024.0f);
            if (phase < 0) phase = phase + 1024;
        }
        return phase;
    }

    void setCutoffAndResonance(double cutoff, double resonance) {
        if (cutoff < 50) cutoff = 50;
        const double f = (cutoff + cutoff) / 44100;
        p = (1.8 - 0.8 * f) * f;
        k = p + p - 1.0;
        const double t = (1.0 - p) * 1.386249;
        const double t2 = t * t + 12.0;
        r = resonance * (t2 + 6.0 * t) / (t2 - 6.0 * t);
    }

    float process(float input) {
        x = static_cast<double>(input) - r * y4;
        if (std::isinf(x) && x < 0) clear();
        y1 = p * x + p * oldX - k * y1;
        y2 = p * y1 + p * oldY1 - k * y2;
        y3 = p * y2 + p * oldY2 - k * y3;
        y4 = p * y3 + p * oldY3 - k * y4;
        if (std::isnan(y4)) clear();
        y4 = y4 - y4 * y4 * y4 / 6.0;
        if (std::isinf(y4)) clear();
        oldX = x;
        oldY1 = y1;
        oldY2 = y2;
        oldY3 = y3;
        return static_cast<float>(y4);
    }

    void clear() {
        ++healings;
        y1 = y2 = y3 = y4 = oldX = oldY1 = oldY2 = oldY3 = 0;
    }

    const WaveTables::Row* sawRow = nullptr;
    const WaveTables::Row* squareRow = nullptr;
    float phase1 = 0;
    float phase2 = 0;
    float frequency1 = 440;
    float frequency2 = 439;
    float envelopePosition = 0;
    bool waiting = false;
    std::int32_t waitSamples = 0;
    double y1 = 0, y2 = 0, y3 = 0, y4 = 0;
    double oldX = 0, oldY1 = 0, oldY2 = 0, oldY3 = 0;
    double x = 0, r = 0, p = 0, k = 0;
};
