// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <sndfile.h>

// Writes a WAV file with two channels at 44100 hertz. The bytes depend on the samples only, not on
// the time, so that two files can be compared byte by byte.
class WavFile {
public:
    enum class Samples { float32, int16 };

    // Creates a file, or replaces an existing one. `isGood` tells whether that worked.
    WavFile(const std::string& path, Samples samples);

    // Appends stereo frames (2 x frames floats, interleaved). With int16, samples are clipped at -1
    // and 1.
    void append(const float* output, std::int64_t frames);

    // Completes the file, whose header gets the length. False if anything has failed so far.
    bool close();

    bool isGood() const { return failure.empty(); }

    // The library's text about the first failure.
    const std::string& getFailure() const { return failure; }

private:
    struct Closer {
        void operator()(SNDFILE* opened) const { sf_close(opened); }
    };

    std::unique_ptr<SNDFILE, Closer> file;
    std::string failure;
};
