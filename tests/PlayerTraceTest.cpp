// SPDX-License-Identifier: Zlib
// How the runner's rules work together: whole moves, pinned to the last bit. They are the feel of
// the game, so a change here is a change of the game. On failure the new trace is printed.
#include "game/Player.h"

#include <bit>
#include <cstdio>
#include <functional>

#include <gtest/gtest.h>

#include "tests/DrawnGrid.h"
#include "tools/Inspector.h"

class PlayerTrace : public testing::Test {
protected:
    enum Input { nothing, left, right, kick };

    static std::string repeated(int count, const std::string& text) {
        std::string result;
        for (int i = 0; i < count; ++i) result += text;
        return result;
    }

    // Every so many steps a line "step: x y vx vy", with the flags that are set: K kicking, A
    // airborne. Steps count from 1.
    static std::string trace(const std::string& drawing, WorldPoint start, int steps, int every,
                             const std::function<Input(int)>& inputAt) {
        const LevelMap map = drawnGrid(drawing);
        Player player(start);
        std::string lines = "\n";
        for (int i = 1; i <= steps; ++i) {
            const Input input = inputAt(i);
            if (input == kick) player.requestKick();
            player.update({.left = input == left, .right = input == right}, map);
            if (i % every != 0) continue;
            const Inspector::Motion now = Inspector::motion(player);
            char line[120];
            std::snprintf(line, sizeof line, "%d: %.9g %.9g %.9g %.9g%s%s\n", i, now.x, now.y,
                          now.vx, now.vy, now.kicking ? " K" : "", now.airborne ? " A" : "");
            lines += line;
        }
        return lines;
    }
};

TEST_F(PlayerTrace, AJumpRisesThirteenTilesAndLandsAfterAHundredSteps) {
    const std::string sky = repeated(22, "...\n") + "###";
    const auto keys = [](int i) { return i == 1 ? kick : nothing; };
    EXPECT_EQ(trace(sky, {1.5f, 21.5f}, 120, 20, keys), R"(
20: 1.5 13.210001 0 -0.320000172 A
40: 1.5 8.90999794 0 -0.120000176 A
60: 1.5 8.60999393 0 0.079999797 A
80: 1.5 12.3099899 0 0.279999822 A
100: 1.5 20.009985 0 0.479999632 A
120: 1.5 21 0 0
)");
}

TEST_F(PlayerTrace, ARunReachesItsLimitBrakesAndSlidesToAStop) {
    const std::string plain = repeated(2, std::string(140, '.') + "\n") + std::string(140, '#');
    const auto keys = [](int i) { return i <= 105 ? right : i <= 108 ? left : nothing; };
    EXPECT_EQ(trace(plain, {2.5f, 1.5f}, 120, 20, keys), R"(
20: 4.59999895 1.5 0.200000018 0 A
40: 10.6999998 1.5 0.399999887 0 A
60: 20.7999973 1.5 0.599999726 0 A
80: 34.8999901 1.5 0.799999535 0 A
100: 52.9999809 1.5 0.999999344 0 A
120: 59.0975761 1.5 0 0 A
)");
}

TEST_F(PlayerTrace, KicksInAShaftAddUpPastTheLimitAndEndAtTheTop) {
    const std::string shaft = repeated(120, "#.#\n");
    const auto keys = [](int i) { return i <= 20 && i % 4 == 1 ? kick : nothing; };
    EXPECT_EQ(trace(shaft, {1.5f, 119.5f}, 200, 40, keys), R"(
40: 1 76.909996 0 -1.12000036 K A
80: 1 40.3099785 0 -0.720000744 K A
120: 1 19.7099438 0 -0.320001125 K A
160: 1 15.1098995 0 0.0799988434 A
200: 1 26.5098534 0 0.479998678 A
)");
}

TEST_F(PlayerTrace, AKickOnTheWayDownGathersSpeedUntilTheLanding) {
    const std::string abyss = repeated(120, std::string(70, '.') + "\n");
    const auto keys = [](int i) { return i == 50 ? kick : nothing; };
    EXPECT_EQ(trace(abyss, {69.5f, 0.5f}, 200, 40, keys), R"(
40: 69.5 8.70000076 0 0.399999887 A
80: 54 25.149992 -0.5 0.549999535 K A
120: 34 55.3499718 -0.5 0.949999154 K A
160: 14 101.549927 -0.5 1.34999883 K A
200: 6.55247498 119 0 0
)");
}

TEST_F(PlayerTrace, FlamesThrowBackFromTheSideAndFromBelow) {
    const std::string corridor = repeated(2, std::string(21, '.') + "F\n") + std::string(22, '#');
    EXPECT_EQ(trace(corridor, {2.5f, 1.5f}, 100, 20, [](int) { return right; }), R"(
20: 4.59999895 1.5 0.200000018 0 A
40: 10.6999998 1.5 0.399999887 0 A
60: 19 1.5 -1 0 A
80: 18.7625008 1.5 0.118749984 0 A
100: 18.053751 1.5 0.0287499987 0 A
)");
    const std::string pit = repeated(20, "...\n") + "FFF";
    EXPECT_EQ(trace(pit, {1.5f, 4.5f}, 240, 40, [](int) { return nothing; }), R"(
40: 1.5 12.7000017 0 0.399999887 A
80: 1.5 10.4999914 0 -0.220000401 A
120: 1.5 9.89997673 0 0.179999635 A
160: 1.5 17.6499977 0 -0.440000564 A
200: 1.5 8.24997044 0 -0.0400006995 A
240: 1.5 14.8499441 0 0.359999239 A
)");
}

// Wanders through caves of random tiles, and what all its steps come to as one number.
TEST_F(PlayerTrace, AThousandWalksThroughRandomCaves) {
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
