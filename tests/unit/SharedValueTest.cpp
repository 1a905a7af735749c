// SPDX-License-Identifier: Zlib
#include "base/SharedValue.h"

#include <cstdint>
#include <thread>

#include <gtest/gtest.h>

TEST(SharedValue, ActsLikeThePlainValue) {
    SharedValue<float> speed = 3.0f;
    speed += 1.5f;
    speed -= 0.5f;
    speed *= 2.0f;
    const SharedValue<float> copy = speed;
    SharedValue<float> assigned;
    EXPECT_EQ(assigned, 0.0f);
    assigned = copy;
    speed = 0.0f;
    EXPECT_EQ(copy, 8.0f);
    EXPECT_EQ(assigned + copy, 16.0f);
}

TEST(SharedValue, AReaderNeverSeesHalfOfAStore) {
    constexpr std::uint64_t patterns[] = {0, 0x0123456789ABCDEF, ~std::uint64_t{0}};
    SharedValue<std::uint64_t> value = patterns[0];
    SharedValue<bool> done = false;
    std::thread writer([&] {
        for (int i = 0; i < 300000; ++i) value = patterns[i % 3];
        done = true;
    });
    int torn = 0;
    while (!done) {
        const std::uint64_t seen = value;
        if (seen != patterns[0] && seen != patterns[1] && seen != patterns[2]) ++torn;
    }
    writer.join();
    EXPECT_EQ(torn, 0);
}
