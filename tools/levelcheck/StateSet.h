// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <vector>

#include "tools/levelcheck/Blocks.h"
#include "tools/levelcheck/RunnerState.h"

// The states of a search in the order in which they were found, and the one of a key.
class StateSet {
public:
    static constexpr std::uint32_t missing = ~0U;

    StateSet();

    std::uint32_t size() const { return static_cast<std::uint32_t>(states.size()); }
    RunnerState& operator[](std::uint32_t index) { return states[index]; }
    const RunnerState& operator[](std::uint32_t index) const { return states[index]; }

    // The state with the same key, if there is one. Otherwise it is added, and `missing` returned.
    std::uint32_t findOrAdd(const RunnerState& state);

    // How many states there may be: what a slot can name.
    static constexpr std::uint32_t mostStates = (1U << 26) - 1;

private:
    static std::uint64_t mixed(std::uint64_t key);
    void grow();

    Blocks<RunnerState> states;
    std::vector<std::uint32_t> slots; // a power of two; state + 1, and above it bits of the key
};
