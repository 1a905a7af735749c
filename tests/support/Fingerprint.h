// SPDX-License-Identifier: Zlib
#pragma once

#include <bit>
#include <cstdint>

// One number for a long series of results, to be compared with a recorded one. Floats count with
// all their bits.
class Fingerprint {
public:
    void add(std::uint32_t number) { hash = (hash ^ number) * 0x100000001B3; }
    void add(float number) { add(std::bit_cast<std::uint32_t>(number + 0.0f)); } // -0 counts as 0
    std::uint64_t value() const { return hash; }

private:
    std::uint64_t hash = 0xCBF29CE484222325;
};
