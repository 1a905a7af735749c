// SPDX-License-Identifier: Zlib
#include "game/PlayMusic.h"

#include "base/Noise.h"
#include "sound/AudioSingleton.h"

static constexpr std::int32_t bassTrack = 0;
static constexpr std::int32_t padTrack = 1;
static constexpr std::int32_t highTrack = 2;
static constexpr std::int32_t bassSteps[] = {0, 2, 4, 6, 8, 10, 12};
static constexpr std::int32_t bassNote = 7;
static constexpr std::int32_t lastBassStep = 14;
static constexpr std::int32_t lastBassNote = 6;
static constexpr std::int32_t highSteps[] = {0, 1, 2, 4, 7, 10, 12, 13, 14};
static constexpr float fastSpeed = 0.5f; // tiles per frame; above it the high voice plays

void PlayMusic::start(AudioSingleton& sound) {
    for (const std::int32_t step : bassSteps) sound.toggleStep(bassTrack, step, bassNote);
    sound.toggleStep(bassTrack, lastBassStep, lastBassNote);
    sound.rewindBar();
}

void PlayMusic::onBar(AudioSingleton& sound, float speed) {
    // -1, 0, 1, ... 7, 0, ... since the remainder keeps the sign. The first bar has no pad.
    barCount = (barCount + 1) % 8;
    if (barCount >= 0) {
        sound.toggleStep(padTrack, 0, padLine[static_cast<std::size_t>(barCount)]);
    }
    // A note that equals the one in its step becomes a rest.
    for (const std::int32_t step : highSteps) {
        const std::int32_t note = speed > fastSpeed ? noiseRange(8) : AudioSingleton::rest;
        sound.toggleStep(highTrack, step, note);
    }
}
