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

struct TraceInput {
    HeldKeys held;
    bool kick = false;
};

static std::string repeated(int count, const std::string& text) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

// Every so many steps a line "step: x y vx vy", with the flags that are set: K kicking, A airborne.
static std::string trace(const std::string& drawing, WorldPoint start, int steps, int every,
                         const std::function<TraceInput(int)>& inputAt) {
    const LevelMap map = drawnGrid(drawing);
    Player player(start);
    std::string lines = "\n";
    for (int i = 1; i <= steps; ++i) {
        const TraceInput input = inputAt(i);
        if (input.kick) player.requestKick();
        player.update(input.held, map);
        if (i % every != 0) continue;
        const Inspector::Motion now = Inspector::motion(player);
        char line[120];
        std::snprintf(line, sizeof line, "%d: %.9g %.9g %.9g %.9g%s%s\n", i, now.x, now.y, now.vx,
                      now.vy, now.kicking ? " K" : "", now.airborne ? " A" : "");
        lines += line;
    }
    return lines;
}

static constexpr HeldKeys left = {.left = true};
static constexpr HeldKeys right = {.right = true};

TEST(PlayerTrace, AJumpRisesThirteenTilesAndLandsAfterAHundredSteps) {
    const std::string sky = repeated(22, "...\n") + "###";
    EXPECT_EQ(trace(sky, {1.5f, 21.5f}, 110, 10,
                    [](int i) {
                        return TraceInput{{}, i == 1};
                    }),
              R"(
10: 1.5 16.8600006 0 -0.420000076 A
20: 1.5 13.210001 0 -0.320000172 A
30: 1.5 10.5599995 0 -0.220000222 A
40: 1.5 8.90999794 0 -0.120000176 A
50: 1.5 8.25999546 0 -0.0200001933 A
60: 1.5 8.60999393 0 0.079999797 A
70: 1.5 9.95999146 0 0.179999813 A
80: 1.5 12.3099899 0 0.279999822 A
90: 1.5 15.6599884 0 0.379999727 A
100: 1.5 20.009985 0 0.479999632 A
110: 1.5 21 0 0
)");
}

TEST(PlayerTrace, ARunReachesItsLimitBrakesAndSlidesToAStop) {
    const std::string plain = repeated(2, std::string(140, '.') + "\n") + std::string(140, '#');
    const auto keys = [](int i) {
        return TraceInput{i <= 105 ? right : i <= 108 ? left : HeldKeys{}};
    };
    EXPECT_EQ(trace(plain, {2.5f, 1.5f}, 120, 10, keys), R"(
10: 3.04999948 1.5 0.0999999866 0 A
20: 4.59999895 1.5 0.200000018 0 A
30: 7.14999962 1.5 0.299999982 0 A
40: 10.6999998 1.5 0.399999887 0 A
50: 15.249999 1.5 0.499999791 0 A
60: 20.7999973 1.5 0.599999726 0 A
70: 27.3499947 1.5 0.69999963 0 A
80: 34.8999901 1.5 0.799999535 0 A
90: 43.4499855 1.5 0.89999944 0 A
100: 52.9999809 1.5 0.999999344 0 A
110: 59.0119324 1.5 0.0544500053 0 A
120: 59.0975761 1.5 0 0 A
)");
}

TEST(PlayerTrace, KicksInAShaftAddUpPastTheLimitAndEndAtTheTop) {
    const std::string shaft = repeated(120, "#.#\n");
    const auto kicks = [](int i) { return TraceInput{{}, i <= 20 && i % 4 == 1}; };
    EXPECT_EQ(trace(shaft, {1.5f, 119.5f}, 200, 10, kicks), R"(
10: 1 112.860001 0 -0.920000076 K A
20: 1 101.209999 0 -1.32000017 K A
30: 1 88.5599976 0 -1.22000027 K A
40: 1 76.909996 0 -1.12000036 K A
50: 1 66.2599945 0 -1.02000046 K A
60: 1 56.6099892 0 -0.920000553 K A
70: 1 47.9599838 0 -0.820000648 K A
80: 1 40.3099785 0 -0.720000744 K A
90: 1 33.6599731 0 -0.620000839 K A
100: 1 28.0099621 0 -0.520000935 K A
110: 1 23.3599548 0 -0.42000103 K A
120: 1 19.7099438 0 -0.320001125 K A
130: 1 17.0599327 0 -0.220001176 K A
140: 1 15.4099226 0 -0.12000113 K A
150: 1 14.7599106 0 -0.0200011469 K A
160: 1 15.1098995 0 0.0799988434 A
170: 1 16.4598866 0 0.17999886 A
180: 1 18.8098755 0 0.279998869 A
190: 1 22.1598644 0 0.379998773 A
200: 1 26.5098534 0 0.479998678 A
)");
}

TEST(PlayerTrace, AKickOnTheWayDownGathersSpeedUntilTheLanding) {
    const std::string abyss = repeated(120, std::string(70, '.') + "\n");
    const auto kick = [](int i) { return TraceInput{{}, i == 50}; };
    EXPECT_EQ(trace(abyss, {69.5f, 0.5f}, 200, 10, kick), R"(
10: 69.5 1.04999995 0 0.0999999866 A
20: 69.5 2.60000014 0 0.200000018 A
30: 69.5 5.15000057 0 0.299999982 A
40: 69.5 8.70000076 0 0.399999887 A
50: 69 13 -0.5 0.249999791 K A
60: 64 16.0499992 -0.5 0.349999696 K A
70: 59 20.0999966 -0.5 0.449999601 K A
80: 54 25.149992 -0.5 0.549999535 K A
90: 49 31.1999874 -0.5 0.64999944 K A
100: 44 38.2499847 -0.5 0.749999344 K A
110: 39 46.2999763 -0.5 0.849999249 K A
120: 34 55.3499718 -0.5 0.949999154 K A
130: 29 65.3999557 -0.5 1.04999912 K A
140: 24 76.4499512 -0.5 1.14999902 K A
150: 19 88.499939 -0.5 1.24999893 K A
160: 14 101.549927 -0.5 1.34999883 K A
170: 9 115.599915 -0.5 1.44999874 K A
180: 6.58235836 119 -0.0272758119 0
190: 6.55247498 119 0 0
200: 6.55247498 119 0 0
)");
}

TEST(PlayerTrace, FlamesThrowBackFromTheSideAndFromBelow) {
    const std::string corridor = repeated(2, std::string(21, '.') + "F\n") + std::string(22, '#');
    EXPECT_EQ(trace(corridor, {2.5f, 1.5f}, 100, 5, [](int) { return TraceInput{right}; }), R"(
5: 2.64999986 1.5 0.049999997 0 A
10: 3.04999948 1.5 0.0999999866 0 A
15: 3.69999933 1.5 0.149999991 0 A
20: 4.59999895 1.5 0.200000018 0 A
25: 5.74999905 1.5 0.25000003 0 A
30: 7.14999962 1.5 0.299999982 0 A
35: 8.80000019 1.5 0.349999934 0 A
40: 10.6999998 1.5 0.399999887 0 A
45: 12.8499994 1.5 0.449999839 0 A
50: 15.249999 1.5 0.499999791 0 A
55: 17.8999977 1.5 0.549999774 0 A
60: 19 1.5 -1 0 A
65: 18.03125 1.5 -0.03125 0 A
70: 18.0250015 1.5 0.0187499989 0 A
75: 18.2687511 1.5 0.068749994 0 A
80: 18.7625008 1.5 0.118749984 0 A
85: 19.5062523 1.5 0.168750003 0 A
90: 18.5 1.5 -0.5 0 A
95: 18.0100002 1.5 -0.0212500002 0 A
100: 18.053751 1.5 0.0287499987 0 A
)");
    const std::string pit = repeated(20, "...\n") + "FFF";
    EXPECT_EQ(trace(pit, {1.5f, 4.5f}, 240, 10, [](int) { return TraceInput{}; }), R"(
10: 1.5 5.05000067 0 0.0999999866 A
20: 1.5 6.60000038 0 0.200000018 A
30: 1.5 9.15000153 0 0.299999982 A
40: 1.5 12.7000017 0 0.399999887 A
50: 1.5 17.2500019 0 0.499999791 A
60: 1.5 16.7999973 0 -0.420000255 A
70: 1.5 13.1499949 0 -0.32000035 A
80: 1.5 10.4999914 0 -0.220000401 A
90: 1.5 8.84998798 0 -0.120000355 A
100: 1.5 8.19998455 0 -0.0200003721 A
110: 1.5 8.54998112 0 0.0799996182 A
120: 1.5 9.89997673 0 0.179999635 A
130: 1.5 12.2499733 0 0.279999644 A
140: 1.5 15.5999689 0 0.379999548 A
150: 1.5 18.9699993 0 -0.0300005376 A
160: 1.5 17.6499977 0 -0.440000564 A
170: 1.5 13.7999926 0 -0.340000659 A
180: 1.5 10.9499846 0 -0.24000074 A
190: 1.5 9.09997845 0 -0.140000686 A
200: 1.5 8.24997044 0 -0.0400006995 A
210: 1.5 8.39996433 0 0.0599992946 A
220: 1.5 9.54995728 0 0.159999296 A
230: 1.5 11.6999502 0 0.259999335 A
240: 1.5 14.8499441 0 0.359999239 A
)");
}

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
