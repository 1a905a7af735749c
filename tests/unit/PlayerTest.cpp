// SPDX-License-Identifier: Zlib
// Each rule of the runner's movement on its own: a small level, a state, one step.
#include "game/Player.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/support/DrawnGrid.h"
#include "tools/Inspector.h"

// A step. The rows of the level are separated by bars. The runner before and after the step is
// "x y vx vy" and its flags: K kicking, A airborne, L facing left. The keys are U, L, R and D if
// held, and K if a kick was requested.
struct PlayerStep {
    std::string level, before, keys, after;
};

static bool has(const std::string& signs, char sign) {
    return signs.find(sign) != std::string::npos;
}

static Inspector::Motion readMotion(const std::string& text) {
    Inspector::Motion motion;
    std::string flags;
    std::istringstream(text) >> motion.x >> motion.y >> motion.vx >> motion.vy >> flags;
    motion.kicking = has(flags, 'K');
    motion.airborne = has(flags, 'A');
    motion.facingRight = !has(flags, 'L');
    return motion;
}

// PlayerTraceTest pins the last bits.
static std::string write(const Inspector::Motion& motion) {
    char text[120];
    std::snprintf(text, sizeof text, "%.5g %.5g %.5g %.5g", motion.x, motion.y, motion.vx + 0.0f,
                  motion.vy + 0.0f);
    const std::string flags = std::string(motion.kicking ? "K" : "") +
                              (motion.airborne ? "A" : "") + (motion.facingRight ? "" : "L");
    return text + (flags.empty() ? "" : " " + flags);
}

static void expectSteps(const std::vector<PlayerStep>& steps) {
    for (PlayerStep step : steps) {
        std::replace(step.level.begin(), step.level.end(), '|', '\n');
        Player player({});
        Inspector::setMotion(player, readMotion(step.before));
        if (has(step.keys, 'K')) player.requestKick();
        player.update({.up = has(step.keys, 'U'),
                       .left = has(step.keys, 'L'),
                       .right = has(step.keys, 'R'),
                       .down = has(step.keys, 'D')},
                      drawnGrid(step.level));
        EXPECT_EQ(write(Inspector::motion(player)), step.after)
            << "from " << step.before << " with " << step.keys << " in\n"
            << step.level;
    }
}

// In these levels the runner is at column 1, row 1.
static const std::string openAir = "...|...|...";
static const std::string ground = "...|...|###";
static const std::string wallLeft = "#..|#..|#..";
static const std::string wallRight = "..#|..#|..#";
static const std::string shaft = "#.#|#.#|#.#";
static const std::string burningGround = "...|...|FFF";

TEST(Player, StartsInTheAirAndStaysSoUntilTheFirstLanding) {
    const LevelMap map = drawnGrid("...\n...\n###");
    Player player({1.25f, 1.5f});
    for (int i = 0; i < 10; ++i) player.update({}, map);
    EXPECT_EQ(write(Inspector::motion(player)), "1.25 1.5 0 0 A");
}

TEST(Player, SpeedCountsBothAxesAndIsKickSpeedOnlyInAKick) {
    Player player({});
    Inspector::setMotion(player, {.vx = -0.75f, .vy = 1});
    EXPECT_EQ(player.speed(), 1.25f);
    EXPECT_EQ(player.kickSpeed(), 0);
    Inspector::setMotion(player, {.vx = -0.75f, .vy = 1, .kicking = true});
    EXPECT_EQ(player.kickSpeed(), 1.25f);
}

TEST(Player, FallsWithoutFrictionAndRestsOnEverythingThatIsNotEmpty) {
    expectSteps({{openAir, "1.5 1.5 0.125 0", "", "1.625 1.51 0.125 0.01 A"}});
    for (const int code : {0x00, 0x10, 0x20, 0x7F, 0xDF, 0xE0, 0xE1, 0xFE}) {
        const std::string tile(1, static_cast<char>(code));
        expectSteps({{"...|...|." + tile, "1.5 1.5 0.125 0", "", "1.5825 1.5 0.0825 0"}});
    }
}

TEST(Player, AKickPushesOffTheRightWallIfThereAreTwo) {
    expectSteps({
        {wallRight, "1.5 1.5 0 0", "K", "1 1.26 -0.5 -0.24 KAL"},
        {wallLeft, "1.5 1.5 0 0", "K", "2 1.26 0.5 -0.24 KA"},
        {"...|..F|...", "1.5 1.5 0 0", "K", "1 1.26 -0.5 -0.24 KAL"}, // a flame counts as a wall
        // The push ends at the left wall and the climb remains; a flame there throws it back.
        {shaft, "1.5 1.5 0 0", "K", "1 1.26 0 -0.24 KA"},
        {"...|F.#|...", "1.5 1.5 0 0", "K", "2 1.26 1 -0.24 KA"},
        {"#.#|...|#.#|#.#", "1.5 1.5 0 0", "K", "1.5 1.51 0 0.01 A"}, // only corners touch
    });
}

TEST(Player, AKickThatFindsNoWallIsForgotten) {
    const LevelMap map = drawnGrid("...\n...\n#.#\n#.#");
    Player player({1.5f, 1.5f});
    player.requestKick();
    player.update({}, map);
    Inspector::setMotion(player, {.x = 1.5f, .y = 2.5f});
    player.update({}, map);
    EXPECT_EQ(player.kickSpeed(), 0);
}

TEST(Player, AKickIsFreeOfSteeringAndLimitFromItsFirstStepOn) {
    expectSteps({
        {"....#|....#|....#", "3.5 1.5 -1 -1", "K", "2 0.26 -1.5 -1.24 KAL"},
        // The wall takes the rest of the approach speed.
        {"....#|....#|....#", "3.5 1.5 1 0", "K", "3 1.26 0 -0.24 KA"},
        {openAir, "1.5 1.5 1.5 1.5 KA", "L", "3 3.01 1.5 1.51 KA"},
        // It reaches the ground without falling, and continues.
        {ground, "1.5 1.5 1.5 0 KA", "L", "3 1.5 1.5 0 KA"},
        // It passes through a wall that is not next to it.
        {"....#...|....#...|....#...", "2.5 1.5 3 0 KA", "", "5.5 1.51 3 0.01 KA"},
    });
}

TEST(Player, AKickEndsAtTheTopOfItsArcIfItHasOne) {
    expectSteps({
        {openAir, "1.5 1.5 0 -0.02 KA", "", "1.5 1.49 0 -0.01 KA"},
        {openAir, "1.5 1.5 0 -0.01 KA", "", "1.5 1.5 0 0 A"}, // to exactly 0
        {openAir, "1.5 1.5 0 -0.005 KA", "", "1.5 1.505 0 0.005 A"},
        {openAir, "1.5 1.5 0 0.5 KA", "", "1.5 2.01 0 0.51 KA"},
        // Steering and the limit apply again in the same step, unless a new kick begins.
        {openAir, "1.5 1.5 -1.5 -0.005 KA", "R", "0.75 1.505 -0.75 0.005 AL"},
        {openAir, "1.5 1.5 1.5 -0.005 KA", "", "2.5 1.505 1 0.005 A"},
        {wallRight, "1.5 1.5 0 -0.005 KA", "K", "1 1.255 -0.5 -0.245 KAL"},
    });
}

TEST(Player, LandsOnlyIfItFallsAndAFlameThrowsItBack) {
    expectSteps({
        {ground, "1.5 1.875 0 0.75 KA", "", "1.5 1 0 0"},
        // It rises beside the ground, without gravity.
        {ground, "1.5 1.875 0 -0.25 KA", "", "1.5 1.625 0 -0.25 KA"},
        {burningGround, "1.5 1.75 0 0.75 K", "",
         "1.5 1.25 0 0.25 A"}, // first set on its row, then moved
        {burningGround, "1.5 1.25 0 0.25 A", "", "1.5 0.75 0 -0.25 A"},
        {burningGround, "1.5 1.75 0.5 0", "R", "2.01 1.75 0.51 0"}, // walking onto it has no effect
    });
}

TEST(Player, AFallThatOvershootsIsLiftedHalfATilePerWholeTileOfSpeed) {
    const std::string high = "...|...|...|...|...|...|";
    expectSteps({
        {high + "###", "1.5 5.75 0 1 KA", "", "1.5 5 0 0"}, // not above 1
        {high + "###", "1.5 5.5 0 1.25 KA", "", "1.5 5 0 0"},
        {high + "###", "1.5 5.4375 0 1.25 KA", "", "1.5 4 0 0"},
        {high + "###", "1.5 5.75 0 2.25 KA", "", "1.5 4 0 0"},
        {high + "###", "1.5 5.75 0 4.25 KA", "", "1.5 3 0 0"},
        // The flame reflects only the speed that the lift leaves, and only if the lift ends above
        // the flame.
        {high + "FFF", "1.5 5.75 0 1.25 KA", "", "1.5 4.75 0 -0.25 A"},
        // Walls and ceilings are tested at the lifted position.
        {"...|..#|...|###", "1.5 2.25 0.25 1.25 K", "R", "1 1 0 0"},
        {"...|...|..#|###", "1.5 2.25 0.25 1.25 K", "R", "1.76 1 0.26 0"},
        {".#.|...|...|###", "1.5 2.25 0.25 1.25 K", "K", "1.665 1 0.165 0 A"},
        {"...|.#.|...|###", "1.5 2.25 0.25 1.25 K", "K", "1.665 0.5 0.165 -0.5 A"},
    });
}

TEST(Player, JumpsFromAnythingSolidUntilACeilingStopsIt) {
    expectSteps({
        {ground, "1.5 1.5 0 0", "K", "1.5 1 0 -0.5 A"},
        {"..#|..#|###", "1.5 1.5 0 0", "K", "1.5 1 0 -0.5 A"}, // not a kick
        {ground, "1.5 1.75 0 0.75", "K", "1.5 0.5 0 -0.5 A"},  // in the step of the landing
        {burningGround, "1.5 1.75 0 0.75", "K", "1.5 0.75 0 -0.25 A"},
        {ground, "1.5 1.75 0 -0.25", "K", "1.5 1 0 -0.75 A"}, // while it rises
        {".#.|...|###", "1.5 1.5 0.25 0", "K", "1.665 1.5 0.165 0 A"},
        {".#.|...|###", "1.5 1.5 0.25 0 A", "", "1.665 1.5 0.165 0 A"}, // and it stays airborne
        {".#.|...|...", "1.5 1.5 0 0.5", "", "1.5 2.01 0 0.51 A"},
        // A kick continues sideways.
        {"###|...|...", "1.5 1.5 1.25 -0.5 KA", "", "2.75 1.5 1.25 0 KA"},
    });
}

TEST(Player, HasFrictionOnTheGroundIsSteeredByHundredthsAndBrakedByHalves) {
    expectSteps({
        // Friction, while neither key is held.
        {ground, "1.5 1.5 0.5 0", "", "1.83 1.5 0.33 0"},
        {ground, "1.5 1.5 -0.5 0", "UD", "1.17 1.5 -0.33 0 L"},
        {ground, "1.5 1.5 0.0153 0", "", "1.5101 1.5 0.010098 0"},
        {ground, "1.5 1.5 0.0151 0", "", "1.5 1.5 0 0"},
        {ground, "1.5 1.5 0.5 0", "LR", "2 1.5 0.5 0"},
        {ground, "1.5 1.5 0.005 0", "R", "1.515 1.5 0.015 0"},
        // Steering; above a speed of 0.05 steering against the motion brakes.
        {openAir, "1.5 1.5 0 0", "R", "1.51 1.51 0.01 0.01 A"},
        {openAir, "1.5 1.5 -0.5 0", "L", "0.99 1.51 -0.51 0.01 AL"},
        {openAir, "1.5 1.5 0.05 0", "L", "1.54 1.51 0.04 0.01 A"},
        {openAir, "1.5 1.5 -0.05 0 L", "R", "1.46 1.51 -0.04 0.01 AL"},
        {openAir, "1.5 1.5 0.0502 0", "L", "1.5251 1.51 0.0251 0.01 A"},
        {openAir, "1.5 1.5 -0.0502 0 L", "R", "1.4749 1.51 -0.0251 0.01 AL"},
        // The limit outside a kick.
        {openAir, "1.5 1.5 1 1", "R", "2.5 2.5 1 1 A"},
        {openAir, "1.5 1.5 -1 -1.5", "L", "0.5 0.5 -1 -1 AL"},
    });
}

TEST(Player, AWallStopsTheRunnerAndDropsTheFractionAndAFlameThrowsItAway) {
    expectSteps({
        {"...|..#|###", "1.875 1.5 0.25 0", "R", "1 1.5 0 0"},
        {"...|#..|...", "1.875 1.5 -0.25 0 L", "L", "1 1.51 0 0.01 AL"},
        {shaft, "1.875 1.5 0 0", "", "1.875 1.51 0 0.01 A"}, // not at rest
        {wallLeft, "1.125 1.5 0.25 0", "", "1.375 1.51 0.25 0.01 A"},
        {wallRight, "1.875 1.5 -0.25 0 L", "", "1.625 1.51 -0.25 0.01 AL"},
        {"...|..F|###", "1.75 1.5 0.25 0", "R", "0 1.5 -1 0 L"},
        {"...|F..|###", "1.75 1.5 -0.25 0 L", "L", "2 1.5 1 0"},
        // The wall behind is not tested in that step.
        {"...|#.F|...", "1.75 1.5 0.25 0", "", "0 1.51 -1 0.01 AL"},
    });
}

TEST(Player, FacesItsMotionAndKeepsFacingThatWayAtRest) {
    expectSteps({
        {openAir, "1.5 1.5 0 0 L", "", "1.5 1.51 0 0.01 AL"},
        {wallLeft, "1.5 1.5 0 0", "L", "1 1.51 0 0.01 A"},        // no turn against a wall,
        {openAir, "1.5 1.5 0.5 0", "L", "1.75 1.51 0.25 0.01 A"}, // nor while it brakes
    });
}

TEST(Player, EverythingOutsideTheGridIsRock) {
    expectSteps({
        {"", "60 984 0 0", "K", "60 984 0 0 A"},
        {"", "60 984 0 0 A", "KL", "60 984 0 0 A"},
        {"", "60 984 0 0 A", "KR", "60 984 0 0 A"},
        {openAir, "-0.5 -0.5 0 0", "", "-0.5 -0.49 0 0.01 A"}, // cut to column 0, row 0
        {openAir, "-1.5 0.5 0 0", "", "-1.5 0.5 0 0"},
        {openAir, "0.5 0.5 -0.5 0", "", "0 0.51 0 0.01 A"},
        {openAir, "1e30 -1e30 0 0", "L", "1e+09 -1e+30 0 0"},
        {openAir, "-1e30 1e30 0 0", "R", "-1e+09 1e+30 0 0"},
    });
    Player player({INFINITY, -INFINITY});
    player.update({.left = true}, drawnGrid("..."));
    EXPECT_EQ(player.speed(), 0);
}

TEST(Player, ACoordinateBeyondEveryCellLiesOutsideTheLevel) {
    const float infinite = std::numeric_limits<float>::infinity();
    for (const float odd : {infinite, -infinite, infinite - infinite, 1e10f, -1e10f}) {
        EXPECT_EQ(std::abs(cellOf(odd)), 1000000000) << odd;
    }
}
