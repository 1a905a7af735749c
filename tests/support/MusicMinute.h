// SPDX-License-Identifier: Zlib
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "game/PlayMusic.h"
#include "sound/AudioSingleton.h"

// A minute of the music of a play, slow and fast, with all drums, more notes than a bank has
// voices, and buffers of many lengths. A test makes it on the main thread and renders it on the one
// that it watches.
class MusicMinute : public AudioSingleton::Callback {
public:
    MusicMinute() {
        sound.setPitches({220, 247.5f, 275, 330, 371.25f, 412.5f, 110, 55});
        for (std::int32_t track = 3; track < AudioSingleton::tracks; ++track) {
            for (std::int32_t step = 0; step < AudioSingleton::steps; ++step) {
                sound.toggleStep(track, step, step % 4);
            }
        }
        music.start(sound);
        sound.setCallback(this);
        for (int thump = 0; thump < 12; ++thump) sound.playBom();
    }

    ~MusicMinute() override {
        sound.setCallback(nullptr);
        sound.clearSteps();
    }

    void onBar() override {
        ++barCount;
        music.onBar(sound, barCount % 4 == 3 ? 0.1f : 1.0f);
    }

    // Asks for the minute as the audio callback does.
    void render() {
        constexpr std::int32_t lengths[] = {512, 1, 256, 441, 55, 2048, 16, 0};
        std::size_t next = 0;
        for (std::int32_t left = 60 * 44100; left > 0; left -= lengths[next++ % 8]) {
            std::fill(output.begin(), output.end(), 0.0f);
            sound.process(output.data(), lengths[next % 8]);
            peak = std::max(peak, *std::max_element(output.begin(), output.end()));
        }
    }

    // What was rendered: its highest sample, and the bars begun in it.
    float loudest() const { return peak; }
    int bars() const { return barCount; }

private:
    AudioSingleton& sound = AudioSingleton::instance();
    PlayMusic music;
    std::vector<float> output = std::vector<float>(2 * 2048);
    float peak = 0;
    int barCount = 0;
};
