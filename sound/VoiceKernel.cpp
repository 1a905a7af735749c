// SPDX-License-Identifier: Zlib
#include "sound/VoiceKernel.h"

#include <algorithm>
#include <limits>

#include "base/SharedValue.h"

static SharedValue<VoiceStages::Level> currentLevel = VoiceStages::best();

void VoiceKernel::setLevel(Level level) {
    currentLevel = std::min(level, VoiceStages::best());
}

void VoiceKernel::render(std::span<SimpleSynth, SimpleSynth::bankSize> bank, float* output,
                         std::int32_t frames) {
    if (frames < 1) return;
    // A note that the main thread starts from here on begins in the next buffer.
    std::array<SimpleSynth*, SimpleSynth::bankSize> sounding;
    std::size_t count = 0;
    for (SimpleSynth& voice : bank) {
        if (voice.isActive()) sounding[count++] = &voice;
    }
    const Voices voices(sounding.data(), count);
    if (VoiceStages::width(currentLevel, count) == 0) {
        for (SimpleSynth* voice : voices) voice->render(output, frames);
        return;
    }
    const auto all = static_cast<std::size_t>(frames);
    for (std::size_t start = 0; start < all; start += VoiceLanes::blockFrames) {
        renderBlock(voices, output + 2 * start, std::min(all - start, VoiceLanes::blockFrames));
    }
}

void VoiceKernel::renderBlock(Voices voices, float* output, std::size_t frames) {
    std::array<std::size_t, SimpleSynth::bankSize> steady; // indices of voices
    std::size_t steadyCount = 0;
    for (std::size_t i = 0; i < voices.size(); ++i) {
        if (isSteady(*voices[i], frames)) steady[steadyCount++] = i;
    }

    const Level level = currentLevel;
    VoiceLanes lanes;
    std::array<Block, SimpleSynth::bankSize> blocks;
    std::array<const float*, SimpleSynth::bankSize> sounds = {}; // null: not rendered side by side
    for (std::size_t first = 0; first < steadyCount;) {
        const std::size_t width = VoiceStages::width(level, steadyCount - first);
        if (width == 0) break;
        const std::size_t count = std::min(width, steadyCount - first);
        for (std::size_t lane = 0; lane < width; ++lane) {
            // Unused lanes render the last voice again, to the same place.
            const std::size_t voice = steady[first + std::min(lane, count - 1)];
            load(lanes, lane, *voices[voice]);
            lanes.sound[lane] = blocks[voice].data();
        }
        VoiceStages::run(level, width, lanes, frames);
        for (std::size_t lane = 0; lane < count; ++lane) {
            const std::size_t voice = steady[first + lane];
            if (unload(lanes, lane, *voices[voice])) sounds[voice] = blocks[voice].data();
        }
        first += count;
    }

    const std::span<const float* const> all = sounds;
    for (std::size_t i = 0; i < voices.size();) {
        std::size_t end = i;
        while (end < voices.size() && sounds[end]) ++end;
        VoiceStages::add(all.subspan(i, end - i), output, frames);
        if (end < voices.size()) voices[end]->render(output, static_cast<std::int32_t>(frames));
        i = end + 1;
    }
}

// May return false for a voice that is only just steady; the bits are the same either way.
bool VoiceKernel::isSteady(const SimpleSynth& voice, std::size_t frames) {
    constexpr float highest = SimpleSynth::sampleRate; // hertz; a whole row of the table a sample
    // If it ended earlier in this buffer, the main thread may be writing its next note.
    if (!voice.isActive() || voice.waiting) return false;
    if (!(voice.frequency1 >= 0 && voice.frequency1 <= highest)) return false;
    if (!(voice.frequency2 >= 0 && voice.frequency2 <= highest)) return false;
    const float end =
        voice.envelopePosition + static_cast<float>(2 * frames) * SimpleSynth::envelopeStep;
    return end * 1.0001f < 2 * voice.noteLength; // the rounding of the sums included
}

void VoiceKernel::load(VoiceLanes& lanes, std::size_t lane, const SimpleSynth& voice) {
    const SimpleSynth::Setting setting(voice);
    lanes.envelopePosition[lane] = voice.envelopePosition;
    lanes.phase1[lane] = voice.phase1;
    lanes.phase2[lane] = voice.phase2;
    lanes.oldX[lane] = voice.filter.oldX;
    lanes.y1[lane] = voice.filter.y1;
    lanes.y2[lane] = voice.filter.y2;
    lanes.y3[lane] = voice.filter.y3;
    lanes.y4[lane] = voice.filter.y4;
    loadEnvelope(lanes.level, lane, setting.level);
    loadEnvelope(lanes.filter, lane, setting.filter);
    lanes.filterEnvAmount[lane] = voice.filterEnvAmount;
    lanes.cutoffBase[lane] = voice.filterCutoff * SimpleSynth::cutoffRange;
    lanes.increment1[lane] = setting.increment1;
    lanes.increment2[lane] = setting.increment2;
    lanes.firstRead[lane] = WaveTables::instance().firstRead(voice.frequency1);
    lanes.waveAmount[lane] = voice.waveAmount;
    lanes.detunedSawAmount[lane] = voice.detunedSawAmount;
    lanes.resonance[lane] = voice.filterRes;
    lanes.distGain[lane] = voice.distGain;
}

void VoiceKernel::loadEnvelope(VoiceLanes::Envelope& lanes, std::size_t lane,
                               const SimpleSynth::Envelope& envelope) {
    constexpr float never = std::numeric_limits<float>::infinity();
    lanes.attackEnd[lane] = envelope.attackEnd;
    lanes.releaseStart[lane] = envelope.releaseLength <= 0 ? never : envelope.releaseStart;
    lanes.releaseLength[lane] = envelope.releaseLength;
    lanes.attackBend[lane] = envelope.attackBend;
    lanes.releaseBend[lane] = envelope.releaseBend;
}

// False, and the voice is unchanged, if the filter blew up. A value of the filter that is not
// finite makes y4 of the same sample not finite, and y4 stays so until the filter is cleared.
bool VoiceKernel::unload(const VoiceLanes& lanes, std::size_t lane, SimpleSynth& voice) {
    if (lanes.y4[lane] - lanes.y4[lane] != 0) return false;
    LadderFilter& filter = voice.filter;
    voice.envelopePosition = lanes.envelopePosition[lane];
    voice.phase1 = lanes.phase1[lane];
    voice.phase2 = lanes.phase2[lane];
    filter.x = filter.oldX = lanes.oldX[lane];
    filter.y1 = filter.oldY1 = lanes.y1[lane];
    filter.y2 = filter.oldY2 = lanes.y2[lane];
    filter.y3 = filter.oldY3 = lanes.y3[lane];
    filter.y4 = lanes.y4[lane];
    return true;
}
