// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/StateSet.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

static constexpr int fastestStep = 400;  // hundredths of a tile per frame that are told apart
static constexpr float fastSpeed = 0.8f; // sideways, tiles per frame
static constexpr float cellParts = 4;    // to each side of a cell, told apart at a fast speed
static constexpr int waitStep = 4;       // frames
static constexpr int startColumns = 2;   // the start's neighbourhood, to each side
static constexpr int startRows = 8;

static constexpr std::size_t firstSlots = 1 << 12;
static constexpr std::uint32_t indexMask = (1U << 26) - 1; // of a slot; above it lies the tag

// The step of a speed: so many hundredths of a tile per frame wide near 0, wider from `coarseFrom`.
static std::uint64_t stepOf(float speed, int fine, int coarseFrom, int coarse) {
    const float hundredths = std::clamp<float>(speed * 100, -fastestStep, fastestStep);
    const int rounded = static_cast<int>(std::floor(hundredths + 0.5f));
    const int size = std::abs(rounded);
    const int step =
        size < coarseFrom ? size / fine : coarseFrom / fine + (size - coarseFrom) / coarse;
    return static_cast<std::uint64_t>(128 + (rounded < 0 ? ~step : step));
}

// In which quarter of its cell a coordinate lies, from 0.
static std::uint64_t partOf(float coordinate) {
    const float part = (coordinate - std::floor(coordinate)) * cellParts;
    return static_cast<std::uint64_t>(part);
}

RunnerState RunnerState::of(const Player& player) {
    const Inspector::Motion motion = Inspector::motion(player);
    return {
        .x = motion.x, .y = motion.y, .vx = motion.vx, .vy = motion.vy, .kicking = motion.kicking};
}

Player RunnerState::player() const {
    Player player({x, y});
    Inspector::setMotion(player, {x, y, vx, vy, kicking, true, true});
    return player;
}

bool RunnerState::isNearStart() const {
    return std::abs(column() - cellOf(playStart.x)) <= startColumns &&
           std::abs(row() - cellOf(playStart.y)) <= startRows;
}

std::uint64_t RunnerState::key() const {
    const auto waitSteps = static_cast<std::uint64_t>((wait + waitStep - 1) / waitStep);
    const bool fast = !kicking && std::fabs(vx) >= fastSpeed;
    const std::uint64_t part = fast ? partOf(x) | partOf(y) << 3 : 0;
    return static_cast<std::uint64_t>(column()) | static_cast<std::uint64_t>(row()) << 16 |
           stepOf(vx, 4, 24, 10) << 32 |
           (vy < 0 ? stepOf(vy, 4, 100, 10) : stepOf(vy, 4, 28, 12)) << 40 | waitSteps << 48 |
           static_cast<std::uint64_t>(kicking) << 50 | part << 52;
}

StateSet::StateSet(std::uint32_t most) : slots(firstSlots) {
    states.reserve(most);
}

// Spreads a key over all bits (the finaliser of MurmurHash3, which is in the public domain).
static std::uint64_t mixed(std::uint64_t key) {
    key = (key ^ key >> 33) * 0xFF51AFD7ED558CCD;
    key = (key ^ key >> 33) * 0xC4CEB9FE1A85EC53;
    return key ^ key >> 33;
}

static std::uint32_t tagOf(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash >> 32) & ~indexMask;
}

std::size_t StateSet::firstSlot(std::uint64_t hash) const {
    return (hash & 0xFFFFFFFF) * slots.size() >> 32;
}

std::uint64_t StateSet::prepare(const RunnerState& state) const {
    const std::uint64_t hash = mixed(state.key());
    __builtin_prefetch(&slots[firstSlot(hash)]);
    return hash;
}

std::uint32_t StateSet::findOrAdd(const RunnerState& state, std::uint64_t hash) {
    if (std::uint64_t{4} * size() >= 3 * slots.size()) grow();
    std::size_t slot = firstSlot(hash);
    for (; slots[slot] != 0; slot = next(slot)) {
        const std::uint32_t index = (slots[slot] & indexMask) - 1;
        if ((slots[slot] & ~indexMask) == tagOf(hash) && states[index].key() == state.key()) {
            return index;
        }
    }
    states.push_back(state);
    slots[slot] = tagOf(hash) | size();
    return missing;
}

void StateSet::grow() {
    const std::size_t count = slots.size() + slots.size() / 4;
    std::vector<std::uint32_t>().swap(slots); // first, so that both are not held at once
    slots.resize(count);
    std::array<std::uint64_t, 32> hashes;
    for (std::uint32_t index = 0; index < size();) {
        const std::uint32_t end = std::min(size(), index + std::uint32_t{hashes.size()});
        for (std::uint32_t i = index; i < end; ++i) hashes[i - index] = prepare(states[i]);
        for (std::size_t i = 0; index < end; ++i) {
            std::size_t slot = firstSlot(hashes[i]);
            while (slots[slot] != 0) slot = next(slot);
            slots[slot] = tagOf(hashes[i]) | ++index;
        }
    }
}
