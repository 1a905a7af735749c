// SPDX-License-Identifier: Zlib
#include "sound/AudioSingleton.h"

#include <thread>

#include "base/FilePath.h"
#include "sound/ClapSynth.h"
#include "sound/CrashSynth.h"
#include "sound/HatSynth.h"
#include "sound/KickSynth.h"

static constexpr std::size_t bomBank = 4;
static constexpr float bomFrequencies[] = {110, 220, 223}; // hertz; the upper two make a beat

AudioSingleton& AudioSingleton::instance() {
    static AudioSingleton sound;
    return sound;
}

AudioSingleton::AudioSingleton() {
    const FilePath patches = FilePath::getDataDirectory().join("synthPatches");
    for (std::size_t i = 0; i < synths.size(); ++i) {
        loadPatch(i, patches.join(patchFiles[i]).text());
    }
    drums = {std::make_unique<KickSynth>(), std::make_unique<ClapSynth>(),
             std::make_unique<HatSynth>(), std::make_unique<CrashSynth>()};
    clearSteps();
    pitches = pickPitches(FilePath::getDataDirectory().join("pitches"));
    cursor.setCallback(this);
}

void AudioSingleton::toggleStep(std::int32_t track, std::int32_t step, std::int32_t note) {
    auto& cell = notes[static_cast<std::size_t>(track)][static_cast<std::size_t>(step)];
    cell = cell == note ? rest : note;
}

void AudioSingleton::clearSteps() {
    for (auto& track : notes) {
        for (auto& cell : track) cell = rest;
    }
}

// `callback` and `inBar` are sequentially consistent: both threads see their loads and stores in
// the same order. With a weaker order each thread could miss the other's store.
void AudioSingleton::setCallback(Callback* listener) {
    callback.store(listener, std::memory_order_seq_cst);
    while (inBar.load(std::memory_order_seq_cst)) std::this_thread::yield();
}

void AudioSingleton::reportBar() {
    inBar.store(true, std::memory_order_seq_cst);
    if (Callback* listener = callback.load(std::memory_order_seq_cst)) listener->onBar();
    inBar.store(false, std::memory_order_release);
}

void AudioSingleton::stepReached(std::int32_t step, std::int32_t sampleOffset) {
    // First, so that a note that the listener writes into step 0 plays in this bar.
    if (step == 0) reportBar();
    const auto column = static_cast<std::size_t>(step);
    for (std::size_t track = 0; track < notes.size(); ++track) {
        const std::int32_t note = notes[track][column];
        if (note < 0) continue;
        if (track < pitchedTracks) {
            synths[track].noteOn(pitches[static_cast<std::size_t>(note)], sampleOffset);
        } else {
            drums[track - pitchedTracks]->trigger(true, sampleOffset, note % 2 != 0);
        }
    }
}

void AudioSingleton::process(float* output, std::int32_t frames) {
    cursor.process(frames);
    for (std::size_t i = 0; i < drums.size(); ++i) {
        synths[i].render(output, frames);
        if (drums[i]->isActive()) drums[i]->render(output, frames);
    }
    synths[bomBank].render(output, frames);
}

void AudioSingleton::playBom() {
    for (const float frequency : bomFrequencies) synths[bomBank].noteOn(frequency, 0);
}
