// SPDX-License-Identifier: Zlib
#include "sound/VoiceStages.h"

VoiceStages::Level VoiceStages::best() {
    return Level::scalar;
}

std::size_t VoiceStages::width(Level, std::size_t) {
    return 0;
}

void VoiceStages::run(Level, std::size_t, VoiceLanes&, std::size_t) {}

void VoiceStages::add(std::span<const float* const>, float*, std::size_t) {}
