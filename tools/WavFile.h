// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <sndfile.h>

// A WAV file of two channels at 44100 hertz that grows at its end. What is written depends on the
// samples alone, not on the time, so that two files can be compared byte by byte.
class WavFile {
public:
    enum class Samples { float32, int16 };

    // Begins a file, in place of one that lies there. Whether it could is `isGood`.
    WavFile(const std::string& path, Samples samples);

    // Appends so many stereo frames (2 x frames floats, interleaved). With int16, what lies
    // beyond -1 to 1 is cut off there.
    void append(const float* output, std::int64_t frames);

    // Ends the file: its header gets the length. False if anything went wrong since the begin.
    bool close();

    bool isGood() const { return failure.empty(); }

    // The reason why it is not good, the library's text.
    const std::string& getFailure() const { return failure; }

private:
    struct Closer {
        void operator()(SNDFILE* file) const { sf_close(file); }
    };

    std::unique_ptr<SNDFILE, Closer> file;
    std::string failure;
};
