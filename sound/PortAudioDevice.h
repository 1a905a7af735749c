// SPDX-License-Identifier: Zlib
#pragma once

#include <portaudio.h>

#include <cstdint>
#include <string>

class PortAudioCallback;

// The one output stream of the program: 32-bit floats, interleaved, with as low a latency and as
// large a buffer as the sound system likes. It knows nothing of what is heard. Its owner calls it
// on the main thread; while the stream is open the callback runs on a thread of PortAudio's. What
// fails prints a line, and the game goes on in silence.
class PortAudioDevice {
public:
    PortAudioDevice() = default;
    PortAudioDevice(const PortAudioDevice&) = delete;
    PortAudioDevice& operator=(const PortAudioDevice&) = delete;
    ~PortAudioDevice() { close(); }

    // What the stream is to be; said before open.

    // Not owned; it lives until the stream is closed. Null leaves the buffers as they come.
    void setCallback(PortAudioCallback* source) { callback = source; }

    void setChannels(std::int32_t input, std::int32_t output);

    // Hertz; open goes over to 48000 if this rate is refused.
    void setSampleRate(double rate) { sampleRate = rate; }

    // "DirectSound", "MME", "ASIO", "CoreAudio", "OSS", "ALSA" or "JACK", in exactly these letters;
    // every other name is "DirectSound". Where that is missing open takes the system's default.
    void setAudioApi(const std::string& name);

    // Starts the stream; true if it runs, false if it cannot or if it was open already. A program
    // that exits under an open stream closes it before anything built earlier is destroyed.
    bool open();

    // Ends the stream, if it is open; no callback runs any more when it returns, also if the sound
    // server has gone. One that is halted, not gone, can hold it up for half a minute.
    void close();

private:
    const PaHostApiInfo* findHostApi() const;
    void settleSampleRate(const PaStreamParameters& output);
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
