// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/StateSet.h"

static constexpr std::size_t firstSlots = 1 << 12;
static constexpr std::uint32_t indexMask = StateSet::mostStates;

StateSet::StateSet() : slots(firstSlots) {}

// Spreads a key over all bits (the finaliser of MurmurHash3, which is in the public domain).
std::uint64_t StateSet::mixed(std::uint64_t key) {
    key = (key ^ key >> 33) * 0xFF51AFD7ED558CCD;
    key = (key ^ key >> 33) * 0xC4CEB9FE1A85EC53;
    return key ^ key >> 33;
}

std::uint32_t StateSet::findOrAdd(const RunnerState& state) {
    if (2 * states.size() >= slots.size()) grow();
    const std::uint64_t key = state.key();
    const std::uint64_t hash = mixed(key);
    const auto tag = static_cast<std::uint32_t>(hash >> 32) & ~indexMask;
    std::size_t place = hash & (slots.size() - 1);
    for (; slots[place] != 0; place = (place + 1) & (slots.size() - 1)) {
        const std::uint32_t index = (slots[place] & indexMask) - 1;
        if ((slots[place] & ~indexMask) == tag && states[index].key() == key) return index;
    }
    states.push(state);
    slots[place] = tag | size();
    return missing;
}

void StateSet::grow() {
    const std::size_t count = 2 * slots.size();
    std::vector<std::uint32_t>().swap(slots); // first, so that both are not held at once
    slots.resize(count);
    for (std::uint32_t index = 0; index < size(); ++index) {
        const std::uint64_t hash = mixed(states[index].key());
        std::size_t place = hash & (count - 1);
        while (slots[place] != 0) place = (place + 1) & (count - 1);
        slots[place] = (static_cast<std::uint32_t>(hash >> 32) & ~indexMask) | (index + 1);
    }
}
