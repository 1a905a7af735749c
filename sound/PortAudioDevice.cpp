// SPDX-License-Identifier: Zlib
#include "sound/PortAudioDevice.h"

#include <atomic>
#include <chrono>
#include <csetjmp>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <thread>
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
static constexpr double secondRate = 48000; // hertz, if the first is refused
static constexpr PaTime lowestLatency = 0;  // seconds
static constexpr int patience = 300;        // ms; a running stream asks for buffers far more often

// The device whose stream is open, for closeAtExit.
static PortAudioDevice* playing = nullptr;

// Counts the buffers asked for, and wraps; written by the audio thread.
static std::atomic<std::uint32_t> buffersAsked = 0;

// The stream's server seems to have died, so the stream was not closed.
static std::atomic<bool> abandoned = false;

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

// With ALSA the lowest latency would give periods too short for a desktop's sound server, which
// then asks for few samples or none, and reports no error. PortAudio reads the period from the
// environment. A value that the player has set there is kept.
static void choosePeriod() {
    constexpr const char* periodSize = "PA_ALSA_PERIODSIZE"; // frames
    if (Platform::environment(periodSize).empty()) Platform::setEnvironment(periodSize, "512");
}

static sigjmp_buf beforeInitializing;
static thread_local bool isInitializing = false; // not in threads that PortAudio starts

// An assertion in PortAudio aborts where ALSA knows no device, without its configuration for
// example. Instead this returns an error, after which nothing of PortAudio is used.
static PaError initialize() {
    volatile PaError result = paInternalError;
    const auto present = std::signal(SIGABRT, [](int) {
        if (isInitializing) siglongjmp(beforeInitializing, 1);
    });
    isInitializing = true;
    // 1 unblocks SIGABRT again, which is blocked while its handler runs.
    if (sigsetjmp(beforeInitializing, 1) == 0) result = Pa_Initialize();
    isInitializing = false;
    std::signal(SIGABRT, present);
    return result;
}

// The libraries that PortAudio uses print a hundred lines about devices that are not there.
static PaError initializeQuietly() {
    const Platform::QuietStandardError quiet;
    return initialize();
}

bool PortAudioDevice::open() {
    if (isOpen) return false;
    choosePeriod();
    if (initializeQuietly() != paNoError) {
        std::cout << "PortAudioDevice Error: Could not initialise." << std::endl;
        return false;
    }
    if (!startStream()) {
        Pa_Terminate();
        return false;
    }
    isOpen = true;
    abandoned = false;
    // When the X server goes away, Xlib calls exit. Without this, static objects would be destroyed
    // while the callback uses them.
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
    if (api) chooseSampleRate(output);
    throughJack = api && api->type == paJACK;
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

// Null if the system has no API at all. For an invalid index PortAudio returns null.
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

// Only prints a line if both rates are refused; opening the stream decides.
void PortAudioDevice::chooseSampleRate(const PaStreamParameters& output) {
    if (Pa_IsFormatSupported(nullptr, &output, sampleRate) != paInvalidSampleRate) return;
    std::cout << "44100Hz samplerate not supported, using 48000Hz." << std::endl;
    sampleRate = secondRate;
    if (Pa_IsFormatSupported(nullptr, &output, sampleRate) != paInvalidSampleRate) return;
    std::cout << "48000Hz not supported either?" << std::endl;
}

// Waits for the stream to ask for a buffer. False if it does not.
static bool isStillAsked() {
    const std::uint32_t before = buffersAsked.load(std::memory_order_relaxed);
    for (int waited = 0; waited < patience; ++waited) {
        if (buffersAsked.load(std::memory_order_relaxed) != before) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

void PortAudioDevice::close() {
    if (!isOpen) return;
    // With JACK, PortAudio stops the stream in the next buffer. If the server has died it would
    // wait ten minutes for one.
    if (throughJack && !isStillAsked()) {
        abandoned = true;
    } else {
        Pa_StopStream(stream);
        Pa_CloseStream(stream);
        Pa_Terminate();
    }
    isOpen = false;
    if (playing == this) playing = nullptr;
}

void PortAudioDevice::closeAtExit() {
    if (playing) playing->close();
}

int PortAudioDevice::fillBuffer(const void* input, void* output, unsigned long frames,
                                const PaStreamCallbackTimeInfo* /*time*/,
                                PaStreamCallbackFlags /*flags*/, void* userData) {
    buffersAsked.store(buffersAsked.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    if (abandoned) return paContinue; // the server was only paused; the callback may be gone
    if (auto* source = static_cast<PortAudioCallback*>(userData)) {
        source->fillBuffer(input, static_cast<float*>(output), static_cast<std::uint32_t>(frames));
    }
    return paContinue;
}
