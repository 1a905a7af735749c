// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

// A row of records that grows without ever moving or copying them, so that it needs no more memory
// than it holds, one block aside.
template <typename Record>
class Blocks {
public:
    std::size_t size() const { return count; }

    Record& operator[](std::size_t index) { return blocks[index >> shift][index & mask]; }
    const Record& operator[](std::size_t index) const {
        return blocks[index >> shift][index & mask];
    }

    void push(const Record& record) {
        if ((count & mask) == 0) blocks.emplace_back(new Record[mask + 1]);
        (*this)[count++] = record;
    }

private:
    static constexpr std::size_t shift = 16;
    static constexpr std::size_t mask = (std::size_t{1} << shift) - 1;

    std::vector<std::unique_ptr<Record[]>> blocks;
    std::size_t count = 0;
};
