// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <string>

// A voice that plays one note at a time. Parameters are set on the main thread, before the stream
// starts.
class MonophonicSynth {
public:
    virtual ~MonophonicSynth() = default;

    // Adds the voice to `frames` stereo frames (2 x frames floats, interleaved). Audio thread.
    virtual void render(float* output, std::int32_t frames) = 0;

    // Starts a note, frequency in hertz, at a sample of the next rendered buffer. Any thread: the
    // voice counts as active only once the note is complete.
    virtual void noteOn(float frequency, std::int32_t sampleOffset) = 0;

    // Sets a parameter by its exact name; an unknown name does nothing. A stored value is used
    // unchanged; otherwise the value is a control position, mapped to the parameter's range.
    virtual void setParameter(const std::string& name, float value, bool stored) = 0;

    // Parameters by index from 0. Outside the range the value is 0 and the name is empty.
    virtual std::int32_t parameterCount() const = 0;
    virtual float parameter(std::int32_t index) const = 0;
    virtual std::string parameterName(std::int32_t index) const = 0;
};
