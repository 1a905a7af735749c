// SPDX-License-Identifier: Zlib
#include "sound/SequencerCursor.h"

static constexpr float stepsPerBar = 16;
static constexpr float beatsPerBar = 4;
static constexpr float sampleRate = 44100; // hertz

float SequencerCursor::increment() const {
    const float samplesPerBeat = sampleRate / (tempo / 60.0f);
    return stepsPerBar / (samplesPerBeat * beatsPerBar);
}

void SequencerCursor::process(std::int32_t frames) {
    const float advance = increment();
    auto last = static_cast<std::int32_t>(position);
    for (std::int32_t i = 0; i < frames; ++i) {
        position += advance;
        if (position >= stepsPerBar) position -= stepsPerBar;
        const auto step = static_cast<std::int32_t>(position);
        if (step == last || !callback) continue;
        callback->stepReached(step, i);
        last = step;
    }
}

void SequencerCursor::rewind() {
    position = stepsPerBar - increment();
}
