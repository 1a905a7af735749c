// SPDX-License-Identifier: Zlib
// The main thread and the audio thread at the same time, as in the game; for the thread sanitizer.

#include <array>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "base/Noise.h"
#include "base/SharedValue.h"
#include "game/PlayMusic.h"
#include "sound/AudioSingleton.h"
#include "sound/SimpleSynth.h"

// A play that the main thread destroys while the audio thread may be in its bar event.
class Play : public AudioSingleton::Callback {
public:
    Play() {
        music.start(sound);
        sound.setCallback(this);
    }

    ~Play() override {
        sound.setCallback(nullptr);
        isOver = true;
        sound.clearSteps();
    }

    void onBar() override {
        EXPECT_FALSE(isOver);
        music.onBar(sound, speed);
        std::this_thread::yield(); // makes a collision more likely
        EXPECT_FALSE(isOver);
        ++bars;
    }

    static inline std::atomic<int> bars = 0; // of all plays
    SharedValue<float> speed = 1.0f;         // tiles per frame

private:
    AudioSingleton& sound = AudioSingleton::instance();
    PlayMusic music;
    std::atomic<bool> isOver = false;
};

TEST(AudioRace, NoBarEventOutlivesThePlay) {
    AudioSingleton& sound = AudioSingleton::instance();
    std::atomic<int> buffers = 0;
    std::atomic<bool> quit = false;
    std::thread audioThread([&] {
        constexpr std::int32_t frames = 64;
        std::vector<float> output(2 * frames);
        for (; !quit; ++buffers) sound.process(output.data(), frames);
    });
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    int plays = 0;
    for (; std::chrono::steady_clock::now() < end; ++plays) {
        Play play;
        const int before = buffers + plays % 3;
        while (buffers < before) std::this_thread::yield();
        noiseUnit();
        sound.toggleStep(4 + plays % 4, plays % 16, plays % 2);
        if (plays % 50 == 0) sound.playBom();
        play.speed = plays % 2 == 0 ? 0.1f : 1.0f;
        sound.rewindBar(); // makes a bar event start while the play is destroyed
        for (int spin = plays % 64 * 50; spin > 0; --spin) play.speed += 0.001f;
    }
    quit = true;
    audioThread.join();
    EXPECT_GT(Play::bars, plays / 10);
}

// As when the thump of a page takes voices of the last page's thump that end within a buffer.
TEST(AudioRace, ANoteMayStartOnAVoiceThatHasJustEnded) {
    std::array<SimpleSynth, SimpleSynth::bankSize> voices;
    for (SimpleSynth& voice : voices) voice.setParameter("noteLength", 0.01f, true);
    std::atomic<bool> quit = false;
    std::thread audioThread([&] {
        constexpr std::int32_t frames = 1024; // longer than a note
        std::vector<float> output(2 * frames);
        while (!quit) SimpleSynth::renderAll(voices, output.data(), frames);
    });
    for (int notes = 0; notes < 1000;) {
        for (SimpleSynth& voice : voices) {
            if (voice.isActive()) continue;
            voice.noteOn(220, 0);
            ++notes;
        }
    }
    quit = true;
    audioThread.join();
}
