// SPDX-License-Identifier: Zlib
// The main thread and the audio thread at the same time, as in the game; for the thread sanitizer.

#include <algorithm>
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

class AudioThreadsTest : public testing::Test {
protected:
    // A play that the main thread destroys while the audio thread may be in its bar event.
    class Play : public AudioSingleton::Callback {
    public:
        Play(AudioSingleton& audio, std::atomic<int>& counter) : sound(audio), bars(counter) {
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

        SharedValue<float> speed = 1.0f; // tiles per frame

    private:
        AudioSingleton& sound;
        std::atomic<int>& bars;
        PlayMusic music;
        std::atomic<bool> isOver = false;
    };

    AudioThreadsTest() {
        sound.setPitches({220, 247.5f, 275, 330, 371.25f, 412.5f, 110, 55});
        audioThread = std::thread([this] {
            std::vector<float> output(2 * frames);
            while (!quit) {
                std::fill(output.begin(), output.end(), 0.0f);
                sound.process(output.data(), frames);
                ++buffers;
            }
        });
    }

    ~AudioThreadsTest() override {
        quit = true;
        audioThread.join();
    }

    static constexpr std::int32_t frames = 64;

    AudioSingleton& sound = AudioSingleton::instance();
    std::atomic<int> buffers = 0;
    std::atomic<int> bars = 0;

private:
    std::atomic<bool> quit = false;
    std::thread audioThread;
};

TEST_F(AudioThreadsTest, NoBarEventOutlivesThePlay) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    int plays = 0;
    while (std::chrono::steady_clock::now() < end) {
        Play play(sound, bars);
        const int before = buffers + plays % 3;
        while (buffers < before) std::this_thread::yield();
        noiseUnit();
        sound.toggleStep(4 + plays % 4, plays % 16, plays % 2);
        if (plays % 50 == 0) sound.playBom();
        play.speed = plays % 2 == 0 ? 0.1f : 1.0f;
        sound.rewindBar(); // makes a bar event start while the play is destroyed
        for (int spin = plays % 64 * 50; spin > 0; --spin) play.speed += 0.001f;
        ++plays;
    }
    EXPECT_GT(bars, plays / 10);
}

// As when the thump of a page takes voices of the last page's thump that end within a buffer.
TEST(VoiceThreadsTest, ANoteMayStartOnAVoiceThatHasJustEnded) {
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
