// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

#include "base/SharedValue.h"

// The clock of the music: it finds the sample on which each step begins. A bar has 16 steps and
// lasts about 2 seconds. The position is rounded to single precision at every sample; the slight
// unevenness that results is the timing of the music. 44100 samples a second.
class SequencerCursor {
public:
    class Callback {
    public:
        virtual ~Callback() = default;

        // A step, 0 to 15, begins on a sample of the buffer. Audio thread.
        virtual void stepReached(std::int32_t step, std::int32_t sampleOffset) = 0;
    };

    // Advances by a buffer of `frames` samples. Audio thread.
    void process(std::int32_t frames);

    // Goes to just before step 0, which the next sample reaches. Any thread; a `process` that runs
    // at the same time may undo it.
    void rewind();

    // Not owned; may be null. Call it before the stream starts.
    void setCallback(Callback* listener) { callback = listener; }

private:
    float increment() const; // steps a sample

    SharedValue<float> position = 0.0f; // steps, 0 up to but not including 16
    float tempo = 120;                  // beats a minute
    Callback* callback = nullptr;
};
