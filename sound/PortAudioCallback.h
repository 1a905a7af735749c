// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

// Who gives the output stream its samples. The device calls it for each buffer, as often as the
// sound system asks. Audio thread.
class PortAudioCallback {
public:
    virtual ~PortAudioCallback() = default;

    // Writes all of a buffer of so many frames, a float for each channel, interleaved; their number
    // differs from call to call. The input is null unless input channels were asked for. It may
    // neither block nor allocate.
    virtual void fillBuffer(const void* input, float* output, std::uint32_t frames) = 0;
};
