// SPDX-License-Identifier: Zlib
#include "game/PlayMusic.h"

#include <cmath>
#include <map>
#include <memory>

#include <gtest/gtest.h>

#include "base/Noise.h"
#include "sound/AudioSingleton.h"
#include "tools/Inspector.h"

class PlayMusicTest : public testing::Test {
protected:
    using Notes = std::map<std::int32_t, std::int32_t>; // by step, without rests

    PlayMusicTest() { music.start(*sound); }

    Notes track(std::int32_t number) const {
        Notes notes;
        for (std::int32_t step = 0; step < AudioSingleton::steps; ++step) {
            const std::int32_t note = Inspector::note(*sound, number, step);
            if (note != AudioSingleton::rest) notes[step] = note;
        }
        return notes;
    }

    std::unique_ptr<AudioSingleton> sound = Inspector::makeSound();
    PlayMusic music;
};

TEST_F(PlayMusicTest, TheBassStaysAndThePadStartsInTheSecondBar) {
    const Notes bass = {{0, 7}, {2, 7}, {4, 7}, {6, 7}, {8, 7}, {10, 7}, {12, 7}, {14, 6}};
    music.onBar(*sound, 0);
    EXPECT_EQ(track(1), Notes());
    for (int round = 0; round < 3; ++round) {
        for (const std::int32_t note : {4, 5, 3, 2, 4, 5, 3, 6}) {
            music.onBar(*sound, 0);
            EXPECT_EQ(track(1), (Notes{{0, note}}));
        }
    }
    EXPECT_EQ(track(0), bass);
    for (std::int32_t empty = 2; empty < AudioSingleton::tracks; ++empty) {
        EXPECT_EQ(track(empty), Notes()) << empty;
    }
}

TEST_F(PlayMusicTest, TheHighVoicePlaysAboveHalfATileAFrame) {
    const Notes figure = {{0, 3},  {1, 5},  {2, 2},  {4, 6}, {7, 1},
                          {10, 5}, {12, 4}, {13, 0}, {14, 3}};
    noiseSeed() = 0;
    music.onBar(*sound, std::nextafter(0.5f, 1.0f));
    EXPECT_EQ(track(2), figure);

    noiseSeed() = 0;
    music.onBar(*sound, 1);
    EXPECT_EQ(track(2), Notes()) << "the same notes again become rests";

    music.onBar(*sound, 1);
    EXPECT_NE(track(2), Notes());
    music.onBar(*sound, 0.5f);
    EXPECT_EQ(track(2), Notes());
    EXPECT_EQ(noiseSeed(), 18u) << "a slow bar draws no random numbers";
}
