// SPDX-License-Identifier: Zlib
#include "sound/PortAudioDevice.h"

#include <cstdlib>
#include <iostream>
#include <utility>

#include "platform/Platform.h"
#include "sound/PortAudioCallback.h"

static constexpr std::pair<const char*, PaHostApiTypeId> audioApis[] = {
    {"DirectSound", paDirectSound},
    {"MME", paMME},
    {"ASIO", paASIO},
    {"CoreAudio", paCoreAudio},
    {"OSS", paOSS},
    {"ALSA", paALSA},
    {"JACK", paJACK}};
static constexpr double secondRate = 48000; // hertz, where the first is refused
static constexpr PaTime lowestLatency = 0;  // seconds

// The open device of the program, for closeAtExit.
static PortAudioDevice* playing = nullptr;

void PortAudioDevice::setChannels(std::int32_t input, std::int32_t output) {
    inputChannels = input;
    outputChannels = output;
}

void PortAudioDevice::setAudioApi(const std::string& name) {
    audioApi = paDirectSound;
    for (const auto& [known, id] : audioApis) {
        if (name == known) audioApi = id;
    }
}

// Through ALSA the lowest latency would come out as periods too short for a desktop's sound server:
// it then asks for hardly a sample, or for none, and reports no error. PortAudio reads the length
// of a period from the environment. What the player has set there stays.
static void settlePeriod() {
    constexpr const char* periodSize = "PA_ALSA_PERIODSIZE"; // frames
    if (Platform::environment(periodSize).empty()) Platform::setEnvironment(periodSize, "512");
}

// The libraries below PortAudio write a hundred lines about devices that they did not find.
static PaError initializeQuietly() {
    const Platform::QuietStandardError quiet;
    return Pa_Initialize();
}

bool PortAudioDevice::open() {
    if (isOpen) return false;
    settlePeriod();
    if (initializeQuietly() != paNoError) {
        std::cout << "PortAudioDevice Error: Could not initialise." << std::endl;
        return false;
    }
    if (!startStream()) {
        Pa_Terminate();
        return false;
    }
    isOpen = true;
    // When the display goes away its library calls exit; what is static would then be destroyed
    // under the callback.
    static const int registered = std::atexit(closeAtExit);
    static_cast<void>(registered);
    playing = this;
    return true;
}

bool PortAudioDevice::startStream() {
    const PaHostApiInfo* api = findHostApi();
    const PaDeviceIndex inputDevice = api ? api->defaultInputDevice : paNoDevice;
    const PaDeviceIndex outputDevice = api ? api->defaultOutputDevice : paNoDevice;
    const PaStreamParameters input = {inputDevice, inputChannels, paFloat32, lowestLatency,
                                      nullptr};
    const PaStreamParameters output = {outputDevice, outputChannels, paFloat32, lowestLatency,
                                       nullptr};
    if (api) settleSampleRate(output);
    if (!api ||
        Pa_OpenStream(&stream, inputChannels < 1 ? nullptr : &input,
                      outputChannels < 1 ? nullptr : &output, sampleRate,
                      paFramesPerBufferUnspecified, paNoFlag, fillBuffer, callback) != paNoError) {
        std::cout << "PortAudioDevice Error: Could not open stream." << std::endl;
        return false;
    }
    if (Pa_StartStream(stream) != paNoError) {
        std::cout << "PortAudioDevice Error: Could not start stream." << std::endl;
        Pa_CloseStream(stream);
        return false;
    }
    return true;
}

// Null if there is none at all. PortAudio answers a number that is no API's with null.
const PaHostApiInfo* PortAudioDevice::findHostApi() const {
    const auto id = static_cast<PaHostApiTypeId>(audioApi);
    if (const PaHostApiInfo* api = Pa_GetHostApiInfo(Pa_HostApiTypeIdToHostApiIndex(id))) {
        return api;
    }
    const PaHostApiInfo* api = Pa_GetHostApiInfo(Pa_GetDefaultHostApi());
    if (api) {
        std::cout << "PortAudioDevice: Audio API not found, using " << api->name << "."
                  << std::endl;
    }
    return api;
}

// A refusal is only told: opening the stream has the last word.
void PortAudioDevice::settleSampleRate(const PaStreamParameters& output) {
    if (Pa_IsFormatSupported(nullptr, &output, sampleRate) != paInvalidSampleRate) return;
    std::cout << "44100Hz samplerate not supported, using 48000Hz." << std::endl;
    sampleRate = secondRate;
    if (Pa_IsFormatSupported(nullptr, &output, sampleRate) != paInvalidSampleRate) return;
    std::cout << "48000Hz not supported either?" << std::endl;
}

void PortAudioDevice::close() {
    if (!isOpen) return;
    Pa_StopStream(stream);
    Pa_CloseStream(stream);
    Pa_Terminate();
    isOpen = false;
    if (playing == this) playing = nullptr;
}

void PortAudioDevice::closeAtExit() {
    if (playing) playing->close();
}

int PortAudioDevice::fillBuffer(const void* input, void* output, unsigned long frames,
                                const PaStreamCallbackTimeInfo* /*time*/,
                                PaStreamCallbackFlags /*flags*/, void* userData) {
    if (auto* source = static_cast<PortAudioCallback*>(userData)) {
        source->fillBuffer(input, static_cast<float*>(output), static_cast<std::uint32_t>(frames));
    }
    return paContinue;
}
