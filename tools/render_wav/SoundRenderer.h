// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "game/PlayMusic.h"
#include "sound/AudioSingleton.h"
#include "tools/WavFile.h"

// Plays something on the game's one AudioSingleton, which no stream drives here, and writes it to
// a file from its first sample to the last that sounds. One renderer plays one thing.
class SoundRenderer : public AudioSingleton::Callback {
public:
    // The sound is computed so many frames at once, fewer than a bar has, as a stream asks for it.
    SoundRenderer(WavFile& target, std::int32_t bufferFrames);

    // A note of the bank "SeqBass", whatever patch that has, at a pitch in hertz.
    void playNote(float hertz);

    // A hit of the drum of a track, 4 to 7.
    void playDrum(std::int32_t track, bool alternate);

    void playBom();

    // So many bars of the music of a play, for a runner of that speed in tiles per frame. No note
    // starts behind the last bar, what sounds rings out.
    void playMusic(std::int32_t bars, float speed);

    // The samples of so many bars. They are a little longer than 2 seconds, and not all equal.
    static std::int64_t samplesOfBars(std::int32_t bars);

    // What was written: stereo frames, and the largest distance from 0.
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
    std::int64_t silent = 0; // frames of silence that are not written yet
    float peak = 0;
};
