// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "game/PlayMusic.h"
#include "sound/AudioSingleton.h"
#include "tools/WavFile.h"

// Plays something on the game's AudioSingleton, without a stream, and writes it to a file, from the
// first sample to the last audible one. A renderer plays one thing only.
class SoundRenderer : public AudioSingleton::Callback {
public:
    // The sound is computed in buffers of `bufferFrames`, less than a bar, as for a stream.
    SoundRenderer(WavFile& target, std::int32_t bufferFrames);

    // A note of the bank "SeqBass", with its present patch, at a pitch in hertz.
    void playNote(float hertz);

    // A hit of the drum of a track, 4 to 7.
    void playDrum(std::int32_t track, bool alternate);

    void playBom();

    // The music of a play; the runner's speed is in tiles per frame. After the last bar no note
    // starts; notes that still sound ring out.
    void playMusic(std::int32_t bars, float speed);

    // The length of `bars` bars in samples. Bars last a little more than 2 seconds and differ in
    // length.
    static std::int64_t samplesOfBars(std::int32_t bars);

    // The number of stereo frames written, and the largest absolute sample.
    std::int64_t getFrames() const { return written; }
    float getPeak() const { return peak; }

    void onBar() override { music.onBar(sound, runnerSpeed); }

private:
    void playCell(std::int32_t track, std::int32_t note);
    void render(std::int64_t frames);
    void ringOut();
    void write(std::int32_t frames);
    void writeSilence();
    void append(const float* samples, std::int64_t frames);

    AudioSingleton& sound = AudioSingleton::instance();
    WavFile& file;
    std::vector<float> buffer; // interleaved stereo
    PlayMusic music;
    float runnerSpeed = 0;
    std::int64_t written = 0;
    std::int64_t silent = 0; // frames of silence not written yet
    float peak = 0;
};
