// SPDX-License-Identifier: Zlib
#pragma once

#include <cmath>

// A resonant low-pass filter of four equal stages with feedback, 24 dB an octave, and a soft clip
// of the last stage inside the loop: the well-known digital model of a transistor ladder. If a very
// high resonance makes it blow up, it starts again from silence. All in double precision.
class LadderFilter {
public:
    static constexpr double lowestCutoff = 50; // hertz

    LadderFilter() { reset(); }

    // Cutoff in hertz, at least 50; with a resonance of about 1 the filter oscillates by itself.
    void setCutoffAndResonance(double newCutoff, double newResonance) {
        cutoff = newCutoff < lowestCutoff ? lowestCutoff : newCutoff;
        resonance = newResonance;
        computeCoefficients();
    }

    void reset() {
        clear();
        computeCoefficients();
    }

    // Filters one sample.
    float process(float input) {
        x = input - r * y4;
        if (x == -HUGE_VAL) clear();
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

private:
    friend class VoiceKernel;

    void clear() { y1 = y2 = y3 = y4 = oldX = oldY1 = oldY2 = oldY3 = 0; }

    void computeCoefficients() {
        const double f = (cutoff + cutoff) / sampleRate;
        p = (1.8 - 0.8 * f) * f;
        k = p + p - 1.0;
        const double t = (1.0 - p) * 1.386249;
        const double t2 = t * t + 12.0;
        r = resonance * (t2 + 6.0 * t) / (t2 - 6.0 * t);
    }

    double cutoff = 440; // hertz
    double resonance = 0.9;
    double sampleRate = 44100;
    double y1 = 0; // the four stages
    double y2 = 0;
    double y3 = 0;
    double y4 = 0;
    double oldX = 0; // the inputs of the stages one sample ago
    double oldY1 = 0;
    double oldY2 = 0;
    double oldY3 = 0;
    double x = 0; // the input of the first stage
    double r = 0;
    double p = 0;
    double k = 0;
};
