// SPDX-License-Identifier: Zlib
// The part of PortAudio that the game uses: one output stream of stereo floats. PortAudio.js holds
// what speaks to the browser.
#include <emscripten.h>
#include <portaudio.h>

#include <vector>

// In PortAudio.js.
extern "C" {
int startSound(double rate, const char* player);
void stopSound();
}

static constexpr int channels = 2;
static constexpr int mostFrames = 4096; // per buffer

// Plays the blocks that it is sent, and reports each when it begins, so that a new one is sent for
// it. It runs in the browser's audio thread.
static constexpr const char* player = R"js(
registerProcessor("player", class extends AudioWorkletProcessor {
    constructor() {
        super();
        this.blocks = [];
        this.place = 0;
        this.port.onmessage = (event) => this.blocks.push(event.data);
    }
    process(inputs, [[left, right]]) {
        for (let i = 0; i < left.length && this.blocks.length > 0; ++i) {
            const block = this.blocks[0];
            left[i] = block[2 * this.place];
            right[i] = block[2 * this.place + 1];
            if (2 * ++this.place < block.length) continue;
            this.place = 0;
            this.blocks.shift();
            this.port.postMessage(null);
        }
        return true;
    }
});
)js";

static PaStreamCallback* callback = nullptr;
static void* callbackData = nullptr;
static double streamRate = 0; // hertz
static std::vector<float> buffer;

extern "C" EMSCRIPTEN_KEEPALIVE const float* fillSound(int frames) {
    const PaStreamCallbackTimeInfo time = {};
    callback(nullptr, buffer.data(), static_cast<unsigned long>(frames), &time, 0, callbackData);
    return buffer.data();
}

PaError Pa_Initialize() {
    return paNoError;
}

PaError Pa_Terminate() {
    return paNoError;
}

PaHostApiIndex Pa_GetDefaultHostApi() {
    return 0;
}

// Whatever API the player names, the browser's is used.
PaHostApiIndex Pa_HostApiTypeIdToHostApiIndex(PaHostApiTypeId /*type*/) {
    return 0;
}

const PaHostApiInfo* Pa_GetHostApiInfo(PaHostApiIndex /*api*/) {
    static const PaHostApiInfo info = {1, paInDevelopment, "the browser", 1, paNoDevice, 0};
    return &info;
}

PaError Pa_IsFormatSupported(const PaStreamParameters* /*input*/,
                             const PaStreamParameters* /*output*/, double /*rate*/) {
    return paFormatIsSupported;
}

PaError Pa_OpenStream(PaStream** stream, const PaStreamParameters* /*input*/,
                      const PaStreamParameters* /*output*/, double rate, unsigned long /*frames*/,
                      PaStreamFlags /*flags*/, PaStreamCallback* function, void* data) {
    callback = function;
    callbackData = data;
    streamRate = rate;
    buffer.resize(std::size_t{mostFrames} * channels);
    *stream = &buffer;
    return paNoError;
}

PaError Pa_StartStream(PaStream* /*stream*/) {
    return startSound(streamRate, player) ? paNoError : paDeviceUnavailable;
}

PaError Pa_StopStream(PaStream* /*stream*/) {
    stopSound();
    return paNoError;
}

PaError Pa_CloseStream(PaStream* /*stream*/) {
    return paNoError;
}
