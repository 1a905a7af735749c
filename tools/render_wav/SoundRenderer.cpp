// SPDX-License-Identifier: Zlib
#include "tools/render_wav/SoundRenderer.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "sound/SequencerCursor.h"

static constexpr std::int64_t silenceAtEnd = 4410;      // frames; no sound pauses for so long
static constexpr std::int64_t longestTail = 60 * 44100; // frames

SoundRenderer::SoundRenderer(WavFile& target, std::int32_t bufferFrames)
    : file(target), buffer(2 * static_cast<std::size_t>(bufferFrames)) {}

void SoundRenderer::playNote(float hertz) {
    PitchTable pitches;
    pitches.fill(hertz);
    sound.setPitches(pitches);
    playCell(0, 0);
}

void SoundRenderer::playDrum(std::int32_t track, bool alternate) {
    playCell(track, alternate ? 1 : 0);
}

void SoundRenderer::playBom() {
    sound.playBom();
    ringOut();
}

void SoundRenderer::playMusic(std::int32_t bars, float speed) {
    runnerSpeed = speed;
    music.start(sound);
    sound.setCallback(this);
    render(samplesOfBars(bars));
    sound.setCallback(nullptr);
    sound.clearSteps();
    writeSilence(); // bars are complete, even if they end in silence
    ringOut();
}

std::int64_t SoundRenderer::samplesOfBars(std::int32_t bars) {
    struct BarCounter : SequencerCursor::Callback {
        std::int32_t begun = 0;
        void stepReached(std::int32_t step, std::int32_t) override { begun += step == 0 ? 1 : 0; }
    } counter;
    SequencerCursor cursor;
    cursor.setCallback(&counter);
    cursor.rewind();
    std::int64_t samples = -1; // without the sample on which the next bar begins
    for (; counter.begun <= bars; ++samples) cursor.process(1);
    return samples;
}

// Plays one cell of the grid, starting on the first sample.
void SoundRenderer::playCell(std::int32_t track, std::int32_t note) {
    sound.toggleStep(track, 0, note);
    sound.rewindBar();
    render(std::ssize(buffer) / 2);
    sound.clearSteps();
    ringOut();
}

void SoundRenderer::render(std::int64_t frames) {
    while (frames > 0 && file.isGood()) {
        const auto now =
            static_cast<std::int32_t>(std::min<std::int64_t>(frames, std::ssize(buffer) / 2));
        std::fill(buffer.begin(), buffer.end(), 0.0f);
        sound.process(buffer.data(), now);
        write(now);
        frames -= now;
    }
}

void SoundRenderer::ringOut() {
    for (std::int64_t tail = 0; silent < silenceAtEnd && tail < longestTail && file.isGood();
         tail += std::ssize(buffer) / 2) {
        render(std::ssize(buffer) / 2);
    }
}

// Silence at the end of a buffer is written only if something sounds later.
void SoundRenderer::write(std::int32_t frames) {
    auto last = buffer.begin() + 2 * static_cast<std::ptrdiff_t>(frames);
    while (last != buffer.begin() && last[-1] == 0 && last[-2] == 0) last -= 2;
    const std::int64_t sounding = (last - buffer.begin()) / 2;
    if (sounding > 0) {
        writeSilence();
        append(buffer.data(), sounding);
        for (auto sample = buffer.begin(); sample != last; ++sample) {
            peak = std::max(peak, std::fabs(*sample));
        }
    }
    silent += frames - sounding;
}

void SoundRenderer::writeSilence() {
    static constexpr std::array<float, 2048> zeros = {};
    while (silent > 0) {
        const auto frames = std::min<std::int64_t>(silent, zeros.size() / 2);
        append(zeros.data(), frames);
        silent -= frames;
    }
}

void SoundRenderer::append(const float* samples, std::int64_t frames) {
    file.append(samples, frames);
    written += frames;
}
