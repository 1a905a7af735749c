// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

// Provides the samples of the output stream. The device calls it for each buffer that the sound
// system asks for. Audio thread.
class PortAudioCallback {
public:
    virtual ~PortAudioCallback() = default;

    // Writes the whole output buffer: `frames` frames of interleaved floats, one for each channel.
    // The number of frames differs from call to call. The input is null unless input channels were
    // requested. Must not block or allocate.
    virtual void fillBuffer(const void* input, float* output, std::uint32_t frames) = 0;
};
