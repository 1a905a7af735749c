// SPDX-License-Identifier: Zlib
#include "sound/AudioSingleton.h"
#include "tools/Inspector.h"

std::unique_ptr<AudioSingleton> Inspector::makeSound() {
    return std::unique_ptr<AudioSingleton>(new AudioSingleton);
}

std::int32_t Inspector::note(const AudioSingleton& sound, std::int32_t track, std::int32_t step) {
    return sound.notes[static_cast<std::size_t>(track)][static_cast<std::size_t>(step)];
}

int Inspector::soundingVoices(const AudioSingleton& sound, std::int32_t bank) {
    int count = 0;
    for (const SimpleSynth& voice : sound.synths[static_cast<std::size_t>(bank)].voices) {
        if (voice.isActive()) ++count;
    }
    return count;
}
