// SPDX-License-Identifier: Zlib
// stream_player API: opens the output stream as the game does and plays numbered frames: the left
// channel rises from -0.5 to 0.5 again and again, the right one is its opposite. Prints a line with
// the latency in seconds and the rate of the stream, then answers each line of its input:
//   report  how many frames the stream has asked for
//   close   closes the device
//   exit    calls exit while the stream is open, as Xlib does when the X server goes away
// Ends with its input.

#include <cstdlib>
#include <iostream>
#include <string>

#include "base/SharedValue.h"
#include "sound/PortAudioCallback.h"
#include "sound/PortAudioDevice.h"

static const PaStreamInfo* streamInfo = nullptr;

extern "C" PaError __real_Pa_StartStream(PaStream* stream);

extern "C" PaError __wrap_Pa_StartStream(PaStream* stream) {
    streamInfo = Pa_GetStreamInfo(stream);
    return __real_Pa_StartStream(stream);
}

class NumberedFrames : public PortAudioCallback {
public:
    void fillBuffer(const void* /*input*/, float* output, std::uint32_t frames) override {
        for (std::uint32_t i = 0; i < frames; ++i, asked += 1) {
            output[2 * i] = static_cast<float>(asked % numbers) / numbers - 0.5f;
            output[2 * i + 1] = -output[2 * i];
        }
    }

    SharedValue<std::uint32_t> asked = 0;

private:
    static constexpr std::uint32_t numbers = 32768;
};

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "usage: stream_player API" << std::endl;
        return 2;
    }
    NumberedFrames frames;
    PortAudioDevice device;
    device.setCallback(&frames);
    device.setAudioApi(argv[1]);
    if (device.open()) {
        std::cout << "open " << streamInfo->outputLatency << " " << streamInfo->sampleRate;
    } else {
        std::cout << "not open";
    }
    std::cout << std::endl;
    for (std::string order; std::getline(std::cin, order);) {
        if (order == "close") device.close();
        if (order == "exit") std::exit(1);
        std::cout << frames.asked << std::endl;
    }
}
