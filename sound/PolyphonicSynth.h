// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "sound/PatchFile.h"

// A bank of voices that share a patch. A note goes to the free voice with the lowest index; if
// none is free the note is dropped. A note that sounds is never cut off. AudioSingleton owns the
// banks. A patch is loaded before the stream starts; then render and noteOn run on the audio thread
// (noteOn also on the main thread, for the bank without a track).
template <typename Voice>
class PolyphonicSynth {
public:
    void noteOn(float frequency, std::int32_t sampleOffset) {
        for (Voice& voice : voices) {
            if (voice.isActive()) continue;
            voice.noteOn(frequency, sampleOffset);
            return;
        }
    }

    // Adds all voices, in order, to `frames` stereo frames (2 x frames floats, interleaved).
    void render(float* output, std::int32_t frames) { Voice::renderAll(voices, output, frames); }

    // Reads a patch file into all voices. If the file has the wrong number of parameters a line is
    // printed, and the voices stay as they are.
    void loadPatch(const std::string& path) {
        const PatchFile file(path, voices[0].parameterCount());
        for (const PatchFile::Value& value : file.getValues()) {
            const std::string name = voices[0].parameterName(value.index);
            for (Voice& voice : voices) voice.setParameter(name, value.number, true);
        }
    }

private:
    friend class Inspector;

    std::array<Voice, Voice::bankSize> voices;
};
