// SPDX-License-Identifier: Zlib
// How the runner's rules work together, pinned to the last bit. That is the feel of the game, so a
// change here is a change of the game.
#include "game/Player.h"

#include <bit>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/DrawnGrid.h"
#include "tools/Inspector.h"

// Wanders through caves of random tiles, and what all its steps come to as one number.
TEST(PlayerTrace, AThousandWalksThroughRandomCaves) {
    std::uint32_t state = 1;
    const auto draw = [&state](std::uint32_t below) {
        state = state * 1664525 + 1013904223;
        return (state >> 16) % below;
    };
    std::uint64_t hash = 0xCBF29CE484222325;
    const auto add = [&hash](std::uint32_t number) { hash = (hash ^ number) * 0x100000001B3; };
    for (int cave = 0; cave < 1000; ++cave) {
        std::string drawing;
        const std::uint32_t rocks = 5 + draw(30); // in a hundred
        for (int i = 0; i < 24 * 24; ++i) {
            const std::uint32_t tile = draw(100);
            drawing += tile < rocks ? '#' : tile < rocks + 8 ? 'F' : '.';
            if (i % 24 == 23) drawing += '\n';
        }
        const LevelMap map = drawnGrid(drawing);
        Player player({12.5f, 12.5f});
        HeldKeys held;
        for (int i = 0; i < 300; ++i) {
            if (i % 16 == 0) {
                const std::uint32_t keys = draw(4);
                held.left = keys & 1;
                held.right = keys & 2;
            }
            if (draw(4) == 0) player.requestKick();
            player.update(held, map);
            const Inspector::Motion now = Inspector::motion(player);
            for (const float part : {now.x, now.y, now.vx, now.vy}) {
                add(std::bit_cast<std::uint32_t>(part + 0.0f)); // without the sign of a zero
            }
            add(now.kicking * 4u + now.airborne * 2u + now.facingRight);
        }
    }
    EXPECT_EQ(hash, 0xBD6FD5E26AE30497u);
}
