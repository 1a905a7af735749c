// SPDX-License-Identifier: Zlib
#include "tools/WavFile.h"

static constexpr int sampleRate = 44100; // hertz
static constexpr int channels = 2;

WavFile::WavFile(const std::string& path, Samples samples) {
    SF_INFO info = {};
    info.samplerate = sampleRate;
    info.channels = channels;
    info.format =
        SF_FORMAT_WAV | (samples == Samples::float32 ? SF_FORMAT_FLOAT : SF_FORMAT_PCM_16);
    file.reset(sf_open(path.c_str(), SFM_WRITE, &info));
    if (!file) {
        failure = sf_strerror(nullptr);
        return;
    }
    // The peak chunk would contain the time of day.
    sf_command(file.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
}

void WavFile::append(const float* output, std::int64_t frames) {
    if (!isGood()) return;
    if (sf_writef_float(file.get(), output, frames) != frames) failure = sf_strerror(file.get());
}

bool WavFile::close() {
    if (!file) return false;
    const int problem = sf_close(file.release());
    if (isGood() && problem != 0) failure = sf_error_number(problem);
    return isGood();
}
