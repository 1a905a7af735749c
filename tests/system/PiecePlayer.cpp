// SPDX-License-Identifier: Zlib
// piece_player offline SECONDS: writes a known piece to standard output, raw floats in stereo.
// piece_player stream API: opens the output stream as the game does and obeys a word a line on
// standard input, answering each with a line:
//   start   the stream, silent so far, goes over to the piece
//   report  frames asked for so far, seconds since the first, frames of the longest buffer
//   close   closes the device
//   exit    calls exit while the stream is open, as a display's library does
// The end of the input is the end of the program.

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "base/Noise.h"
#include "base/SharedValue.h"
#include "game/PlayMusic.h"
#include "sound/AudioSingleton.h"
#include "sound/PortAudioCallback.h"
#include "sound/PortAudioDevice.h"

static constexpr double sampleRate = 44100; // hertz

// The stream that the device opened.
static PaStream* openedStream = nullptr;

extern "C" PaError __real_Pa_OpenStream(PaStream**, const PaStreamParameters*,
                                        const PaStreamParameters*, double, unsigned long,
                                        PaStreamFlags, PaStreamCallback*, void*);

extern "C" PaError __wrap_Pa_OpenStream(PaStream** stream, const PaStreamParameters* input,
                                        const PaStreamParameters* output, double rate,
                                        unsigned long frames, PaStreamFlags flags,
                                        PaStreamCallback* callback, void* userData) {
    const PaError result =
        __real_Pa_OpenStream(stream, input, output, rate, frames, flags, callback, userData);
    openedStream = result == paNoError ? *stream : nullptr;
    return result;
}

// The music of a fast play with drums under it, the same in each run. It comes in blocks of one
// length: a note's first sample, and who draws which noise, depend on where buffers begin.
class KnownPiece : public AudioSingleton::Callback {
public:
    void start() {
        noiseSeed() = 1;
        sound.setPitches({220, 247.5f, 275, 330, 371.25f, 412.5f, 110, 55});
        for (const auto& [track, steps] : drums) {
            for (const std::int32_t step : steps) sound.toggleStep(track, step, 0);
        }
        music.start(sound);
        sound.setCallback(this);
    }

    void onBar() override { music.onBar(sound, 1); }

    // Fills stereo frames: to the left the piece, half as loud as the game, since a recorder may
    // not bear samples beyond 1; to the right the number of the frame, from -0.5 to 0.5, round and
    // round.
    void render(float* output, std::size_t frames) {
        for (std::size_t i = 0; i < frames; ++i, ++frame) {
            const std::size_t place = frame % blockFrames;
            if (place == 0) {
                block.fill(0);
                sound.process(block.data(), blockFrames);
            }
            output[2 * i] = 0.5f * block[2 * place];
            output[2 * i + 1] = static_cast<float>(frame % countedFrames) / countedFrames - 0.5f;
        }
    }

private:
    const std::vector<std::pair<std::int32_t, std::vector<std::int32_t>>> drums = {
        {4, {0, 8}}, {5, {4, 12}}, {6, {2, 6, 10, 14}}};
    static constexpr std::int32_t blockFrames = 64;
    static constexpr std::int32_t countedFrames = 32768;

    AudioSingleton& sound = AudioSingleton::instance();
    PlayMusic music;
    std::array<float, 2 * blockFrames> block = {};
    std::size_t frame = 0;
};

// What the game's root does for the stream, and what that asked of it.
class PieceStream : public PortAudioCallback {
public:
    explicit PieceStream(KnownPiece& what) : piece(what) {}

    void fillBuffer(const void* /*input*/, float* output, std::uint32_t frames) override {
        const auto now = std::chrono::steady_clock::now();
        if (asked == 0) begin = now;
        const std::chrono::duration<double> passed = now - begin;
        seconds = passed.count();
        longest = std::max<std::uint32_t>(longest, frames);
        asked += frames;
        if (playing.load(std::memory_order_acquire)) {
            piece.render(output, frames);
        } else {
            std::fill_n(output, 2 * frames, 0.0f);
        }
    }

    void start() { playing.store(true, std::memory_order_release); }

    std::string report() const {
        return std::to_string(asked) + " " + std::to_string(seconds) + " " +
               std::to_string(longest);
    }

private:
    KnownPiece& piece;
    std::atomic<bool> playing = false;
    std::chrono::steady_clock::time_point begin;
    SharedValue<std::uint64_t> asked = 0;
    SharedValue<double> seconds = 0;
    SharedValue<std::uint32_t> longest = 0;
};

static int renderOffline(double seconds) {
    KnownPiece piece;
    piece.start();
    std::vector<float> output(2 * static_cast<std::size_t>(seconds * sampleRate));
    piece.render(output.data(), output.size() / 2);
    std::fwrite(output.data(), sizeof(float), output.size(), stdout);
    return 0;
}

static int playOnStream(const std::string& api) {
    KnownPiece piece;
    PieceStream stream(piece);
    PortAudioDevice device;
    device.setCallback(&stream);
    device.setChannels(0, 2);
    device.setSampleRate(sampleRate);
    device.setAudioApi(api);
    const bool opened = device.open();
    const PaStreamInfo* info = openedStream ? Pa_GetStreamInfo(openedStream) : nullptr;
    std::cout << (opened ? "open " : "not open ") << (info ? info->outputLatency : 0) << " "
              << (info ? info->sampleRate : 0) << std::endl;
    for (std::string word; std::getline(std::cin, word);) {
        if (word == "start") {
            piece.start();
            stream.start();
        } else if (word == "close") {
            device.close();
        } else if (word == "exit") {
            std::exit(1);
        }
        std::cout << (word == "report" ? stream.report() : word) << std::endl;
    }
    return 0;
}

int main(int argc, char* argv[]) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 2 && arguments[0] == "offline") {
        return renderOffline(std::stod(arguments[1]));
    }
    if (arguments.size() == 2 && arguments[0] == "stream") return playOnStream(arguments[1]);
    std::cerr << "usage: piece_player offline SECONDS | piece_player stream API" << std::endl;
    return 2;
}
