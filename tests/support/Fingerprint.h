// SPDX-License-Identifier: Zlib
#pragma once

#include <bit>
#include <cstdint>

// One number for a long series of results, to be compared with a recorded one. All bits of a float
// count, except that -0 equals 0.
class Fingerprint {
public:
    void add(std::uint32_t number) { hash = (hash ^ number) * 0x100000001B3; }
    void add(float number) { add(std::bit_cast<std::uint32_t>(number + 0.0f)); }
    std::uint64_t value() const { return hash; }

private:
    std::uint64_t hash = 0xCBF29CE484222325;
};
