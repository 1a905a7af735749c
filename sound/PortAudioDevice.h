// SPDX-License-Identifier: Zlib
#pragma once

#include <portaudio.h>

#include <cstdint>
#include <string>

class PortAudioCallback;

// The program's output stream: 32-bit floats, interleaved, at the lowest latency; the sound system
// chooses the size of the buffers. All operations run on the main thread; while the stream is open,
// the callback runs on a thread of PortAudio. A failure prints one line, and the game goes on in
// silence.
class PortAudioDevice {
public:
    PortAudioDevice() = default;
    PortAudioDevice(const PortAudioDevice&) = delete;
    PortAudioDevice& operator=(const PortAudioDevice&) = delete;
    ~PortAudioDevice() { close(); }

    // The next four are called before open.

    // Not owned; must live until the stream is closed. With null the buffers stay as they are.
    void setCallback(PortAudioCallback* source) { callback = source; }

    void setChannels(std::int32_t input, std::int32_t output);

    // In hertz; if this rate is refused, open uses 48000.
    void setSampleRate(double rate) { sampleRate = rate; }

    // "DirectSound", "MME", "ASIO", "CoreAudio", "OSS", "ALSA" or "JACK", spelled exactly like
    // this; any other name means "DirectSound". If the API is missing, open uses the system's
    // default.
    void setAudioApi(const std::string& name);

    // Starts the stream. False if that fails, or if the stream is open already. If the program
    // calls exit while the stream is open, it is closed before objects built earlier are destroyed.
    bool open();

    // Ends the stream if it is open. When the call returns the callback is no longer running, even
    // if the sound server has died. A server that is only paused can delay the call for half a
    // minute.
    void close();

private:
    const PaHostApiInfo* findHostApi() const;
    void chooseSampleRate(const PaStreamParameters& output);
    bool startStream();
    static void closeAtExit();
    static int fillBuffer(const void* input, void* output, unsigned long frames,
                          const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                          void* userData);

    PaStream* stream = nullptr;
    PortAudioCallback* callback = nullptr;
    std::int32_t inputChannels = 0;
    std::int32_t outputChannels = 2;
    double sampleRate = 44100; // hertz
    std::int32_t audioApi = paDirectSound;
    bool isOpen = false;
    bool throughJack = false;
};
