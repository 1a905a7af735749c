// SPDX-License-Identifier: Zlib
// How the runner's rules work together, pinned to the last bit. That is the feel of the game, so a
// change here is a change of the game.
#include "game/Player.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/DrawnGrid.h"
#include "tests/support/Fingerprint.h"
#include "tools/Inspector.h"

// Walks through caves of random tiles; all steps together give one number.
TEST(PlayerTrace, AThousandWalksThroughRandomCaves) {
    std::uint32_t state = 1;
    const auto draw = [&state](std::uint32_t below) {
        state = state * 1664525 + 1013904223;
        return (state >> 16) % below;
    };
    Fingerprint fingerprint;
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
            for (const float part : {now.x, now.y, now.vx, now.vy}) fingerprint.add(part);
            fingerprint.add(now.kicking * 4u + now.airborne * 2u + now.facingRight);
        }
    }
    EXPECT_EQ(fingerprint.value(), 0xBD6FD5E26AE30497u);
}
