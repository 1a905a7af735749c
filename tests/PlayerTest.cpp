// SPDX-License-Identifier: Zlib
// Each rule of the runner's movement alone: a small level, a state, one step.
#include "game/Player.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "tests/DrawnGrid.h"
#include "tools/Inspector.h"

using Motion = Inspector::Motion;

// The runner stands or flies at column 1, row 1 of these, unless a test says otherwise.
static const std::string openAir = "...\n...\n...";
static const std::string ground = "...\n...\n###";
static const std::string wallLeft = "#..\n#..\n#..";
static const std::string wallRight = "..#\n..#\n..#";
static const std::string shaft = "#.#\n#.#\n#.#";
static const std::string burningGround = "...\n...\nFFF";

static constexpr HeldKeys none = {};
static constexpr HeldKeys left = {.left = true};
static constexpr HeldKeys right = {.right = true};
static constexpr HeldKeys bothWays = {.left = true, .right = true};
static constexpr HeldKeys upAndDown = {.up = true, .down = true};

static Motion step(const std::string& drawing, const Motion& motion, const HeldKeys& held = none,
                   bool kick = false) {
    Player player({});
    Inspector::setMotion(player, motion);
    if (kick) player.requestKick();
    player.update(held, drawnGrid(drawing));
    return Inspector::motion(player);
}

static Motion kickStep(const std::string& drawing, const Motion& motion) {
    return step(drawing, motion, none, true);
}

TEST(Player, StartsInTheAirAndStaysSoUntilTheFirstLanding) {
    const LevelMap map = drawnGrid(ground);
    Player player({1.25f, 1.5f});
    EXPECT_EQ(player.position().x, 1.25f);
    EXPECT_EQ(player.position().y, 1.5f);
    EXPECT_EQ(player.speed(), 0);
    for (int i = 0; i < 10; ++i) player.update(none, map);
    EXPECT_TRUE(player.isAirborne());
    EXPECT_EQ(player.position().y, 1.5f);
}

TEST(Player, SpeedIsOfBothAxesAndCountsAsKickSpeedInAKickAlone) {
    Player player({});
    Inspector::setMotion(player, {.vx = -0.75f, .vy = 1});
    EXPECT_EQ(player.speed(), 1.25f);
    EXPECT_EQ(player.kickSpeed(), 0);
    Inspector::setMotion(player, {.vx = -0.75f, .vy = 1, .kicking = true});
    EXPECT_EQ(player.kickSpeed(), 1.25f);
}

TEST(Player, FallsInTheAirAndRestsOnEverythingThatIsNotEmpty) {
    const Motion start = {.x = 1.5f, .y = 1.5f, .vx = 0.125f};
    const Motion fallen = step(openAir, start);
    EXPECT_FLOAT_EQ(fallen.vy, 0.01f);
    EXPECT_FLOAT_EQ(fallen.y, 1.51f);
    EXPECT_EQ(fallen.x, 1.625f);
    EXPECT_EQ(fallen.vx, 0.125f); // no friction
    EXPECT_TRUE(fallen.airborne);
    for (const int code : {0x00, 0x10, 0x20, 0x7F, 0xDF, 0xE0, 0xE1, 0xFE}) {
        const Motion rested = step("...\n...\n." + std::string(1, static_cast<char>(code)), start);
        EXPECT_EQ(rested.vy, 0) << code;
        EXPECT_EQ(rested.y, 1.5f) << code;
        EXPECT_FALSE(rested.airborne) << code;
    }
}

TEST(Player, AKickEndsAtTheTopOfItsArcIfItHasOne) {
    const auto stillKicking = [](float vy) {
        return step(openAir, {.x = 1.5f, .y = 1.5f, .vy = vy, .kicking = true}).kicking;
    };
    EXPECT_TRUE(stillKicking(-0.02f));
    EXPECT_FALSE(stillKicking(-0.01f)); // to exactly 0
    EXPECT_FALSE(stillKicking(-0.005f));
    EXPECT_TRUE(stillKicking(0));
    EXPECT_TRUE(stillKicking(0.5f));
    // Steering and the limit are back in the same step.
    const Motion ended =
        step(openAir, {.x = 1.5f, .y = 1.5f, .vx = -1.5f, .vy = -0.005f, .kicking = true}, right);
    EXPECT_EQ(ended.vx, -0.75f);
    EXPECT_EQ(step(openAir, {.x = 1.5f, .y = 1.5f, .vx = 1.5f, .vy = -0.005f, .kicking = true}).vx,
              1);
}

TEST(Player, AKickPushesOffTheWallBesideTheRightOneFirst) {
    const Motion start = {.x = 1.5f, .y = 1.5f};
    const Motion offRight = kickStep(wallRight, start);
    EXPECT_EQ(offRight.vx, -0.5f);
    EXPECT_FLOAT_EQ(offRight.vy, -0.24f);
    EXPECT_EQ(offRight.x, 1);
    EXPECT_FLOAT_EQ(offRight.y, 1.26f);
    EXPECT_TRUE(offRight.kicking && offRight.airborne);
    EXPECT_EQ(kickStep(wallLeft, start).vx, 0.5f);
    EXPECT_EQ(kickStep("...\n..F\n...", start).vx, -0.5f); // a flame is a wall
    EXPECT_EQ(kickStep("...\nF..\n...", start).vx, 0.5f);

    // In a shaft the left wall ends the push at once, and the climb remains.
    const Motion inShaft = kickStep(shaft, start);
    EXPECT_EQ(inShaft.vx, 0);
    EXPECT_EQ(inShaft.x, 1);
    EXPECT_FLOAT_EQ(inShaft.vy, -0.24f);
    EXPECT_TRUE(inShaft.kicking);
    EXPECT_EQ(kickStep("...\nF.#\n...", start).vx, 1); // or the flame there throws it back

    // At the top of a kick the next one takes over.
    const Motion again =
        kickStep(wallRight, {.x = 1.5f, .y = 1.5f, .vy = -0.005f, .kicking = true});
    EXPECT_TRUE(again.kicking);
    EXPECT_FLOAT_EQ(again.vy, -0.245f);
}

TEST(Player, AKickWithoutAWallBesideIsForgotten) {
    const LevelMap map = drawnGrid("#.#\n...\n#.#\n#.#"); // only corners touch in row 1
    Player player({1.5f, 1.5f});
    player.requestKick();
    player.update(none, map);
    EXPECT_EQ(Inspector::motion(player).vx, 0);
    EXPECT_EQ(player.kickSpeed(), 0);
    Inspector::setMotion(player, {.x = 1.5f, .y = 2.5f});
    player.update(none, map);
    EXPECT_EQ(player.kickSpeed(), 0);
}

TEST(Player, AKickEscapesTheLimitInItsOwnStep) {
    const std::string wall = "....#\n....#\n....#";
    const Motion away = kickStep(wall, {.x = 3.5f, .y = 1.5f, .vx = -1, .vy = -1});
    EXPECT_EQ(away.vx, -1.5f);
    EXPECT_EQ(away.x, 2);
    EXPECT_FLOAT_EQ(away.vy, -1.24f);
    const Motion toward = kickStep(wall, {.x = 3.5f, .y = 1.5f, .vx = 1});
    EXPECT_EQ(toward.vx, 0); // what is left of the approach ends at the wall
    EXPECT_EQ(toward.x, 3);
    EXPECT_TRUE(toward.kicking);
}

TEST(Player, AKickKnowsNeitherSteeringNorLimit) {
    const Motion kicking = {.x = 1.5f, .y = 1.5f, .vx = 1.5f, .vy = 1.5f, .kicking = true};
    const Motion flown = step(openAir, kicking, left);
    EXPECT_EQ(flown.vx, 1.5f);
    EXPECT_FLOAT_EQ(flown.vy, 1.51f);
    EXPECT_TRUE(flown.kicking);
    // A kick that reaches the ground without falling goes on there.
    const Motion grounded =
        step(ground, {.x = 1.5f, .y = 1.5f, .vx = 1.5f, .kicking = true, .airborne = true}, left);
    EXPECT_EQ(grounded.vx, 1.5f);
    EXPECT_TRUE(grounded.kicking && grounded.airborne);
}

TEST(Player, LandsOnRockByFallingOnly) {
    const Motion landed =
        step(ground, {.x = 1.5f, .y = 1.875f, .vy = 0.75f, .kicking = true, .airborne = true});
    EXPECT_EQ(landed.vy, 0);
    EXPECT_EQ(landed.y, 1);
    EXPECT_EQ(landed.x, 1.5f);
    EXPECT_FALSE(landed.kicking || landed.airborne);

    const Motion grazing =
        step(ground, {.x = 1.5f, .y = 1.875f, .vy = -0.25f, .kicking = true, .airborne = true});
    EXPECT_EQ(grazing.vy, -0.25f); // no gravity here
    EXPECT_EQ(grazing.y, 1.625f);
    EXPECT_TRUE(grazing.kicking && grazing.airborne);
}

TEST(Player, AFlameUnderfootThrowsBackWhatFallsOnIt) {
    const Motion first = step(burningGround, {.x = 1.5f, .y = 1.75f, .vy = 0.75f, .kicking = true});
    EXPECT_EQ(first.vy, 0.25f);
    EXPECT_EQ(first.y, 1.25f); // set to its row, then moved
    EXPECT_TRUE(first.airborne);
    EXPECT_FALSE(first.kicking);
    const Motion second = step(burningGround, first);
    EXPECT_EQ(second.vy, -0.25f);
    EXPECT_EQ(second.y, 0.75f);
    // Whoever walks onto it stands.
    const Motion walked = step(burningGround, {.x = 1.5f, .y = 1.75f, .vx = 0.5f}, right);
    EXPECT_EQ(walked.vy, 0);
    EXPECT_EQ(walked.y, 1.75f);
    EXPECT_FALSE(walked.airborne);
}

TEST(Player, AFallThatOvershotIsLiftedHalfATileForEachWholeTileOfSpeed) {
    const auto land = [](float y, float vy, char floor) {
        const std::string row = "...\n";
        return step(row + row + row + row + row + row + std::string(3, floor),
                    {.x = 1.5f, .y = y, .vy = vy, .kicking = true});
    };
    EXPECT_EQ(land(5.75f, 1, '#').y, 5); // not above 1
    EXPECT_EQ(land(5.5f, 1.25f, '#').y, 5);
    EXPECT_EQ(land(5.4375f, 1.25f, '#').y, 4);
    EXPECT_EQ(land(5.75f, 2, '#').y, 5);
    EXPECT_EQ(land(5.75f, 2.25f, '#').y, 4);
    EXPECT_EQ(land(5.75f, 4.25f, '#').y, 3);
    EXPECT_EQ(land(5.75f, 4.25f, '#').vy, 0);
    // Only the speed that the lift leaves meets the flame, and only if the lift ends above it.
    EXPECT_EQ(land(5.75f, 1.25f, 'F').vy, -0.25f);
    EXPECT_EQ(land(5.25f, 1.25f, 'F').vy, 0);

    // Walls and ceilings are looked for beside the lifted runner.
    const Motion fast = {.x = 1.5f, .y = 2.25f, .vx = 0.25f, .vy = 1.25f, .kicking = true};
    EXPECT_EQ(step("...\n..#\n...\n###", fast, right).vx, 0);
    EXPECT_GT(step("...\n...\n..#\n###", fast, right).vx, 0.25f);
    EXPECT_EQ(step(".#.\n...\n...\n###", fast, none, true).vy, 0);
    EXPECT_EQ(step("...\n.#.\n...\n###", fast, none, true).vy, -0.5f);
}

TEST(Player, JumpsFromWhateverIsBelow) {
    const Motion jumped = kickStep(ground, {.x = 1.5f, .y = 1.5f});
    EXPECT_EQ(jumped.vy, -0.5f);
    EXPECT_EQ(jumped.y, 1);
    EXPECT_TRUE(jumped.airborne);
    EXPECT_FALSE(jumped.kicking);
    EXPECT_EQ(kickStep("..#\n..#\n###", {.x = 1.5f, .y = 1.5f}).vx, 0); // no kick from the ground
    // In the step of the landing, off a flame too, and while rising along it.
    EXPECT_EQ(kickStep(ground, {.x = 1.5f, .y = 1.75f, .vy = 0.75f}).y, 0.5f);
    EXPECT_EQ(kickStep(burningGround, {.x = 1.5f, .y = 1.75f, .vy = 0.75f}).vy, -0.25f);
    EXPECT_EQ(kickStep(ground, {.x = 1.5f, .y = 1.75f, .vy = -0.25f}).vy, -0.75f);
}

TEST(Player, ACeilingEndsTheRiseAndTheRunnerStaysAirborneOnTheGround) {
    for (const char* const drawing : {".#.\n...\n###", ".F.\n...\n###"}) {
        const Motion bumped = kickStep(drawing, {.x = 1.5f, .y = 1.5f, .vx = 0.25f});
        EXPECT_EQ(bumped.vy, 0);
        EXPECT_EQ(bumped.y, 1.5f);
        EXPECT_GT(bumped.vx, 0);
        EXPECT_TRUE(bumped.airborne);
        EXPECT_TRUE(step(drawing, bumped).airborne);
    }
    EXPECT_EQ(step(".#.\n...\n...", {.x = 1.5f, .y = 1.5f, .vy = 0.5f}).vy, 0.5f + 0.01f);
    // In a kick the speed to the side goes on, and so does the kick.
    const Motion kicked =
        step("###\n...\n...", {.x = 1.5f, .y = 1.5f, .vx = 1.25f, .vy = -0.5f, .kicking = true});
    EXPECT_EQ(kicked.vx, 1.25f);
    EXPECT_EQ(kicked.vy, 0);
    EXPECT_TRUE(kicked.kicking);
}

TEST(Player, FrictionSlowsOnTheGroundWhileNoKeyOfTheTwoIsHeld) {
    const auto slowed = [](float vx, const HeldKeys& held) {
        return step(ground, {.x = 1.5f, .y = 1.5f, .vx = vx}, held).vx;
    };
    EXPECT_FLOAT_EQ(slowed(0.5f, none), 0.33f);
    EXPECT_FLOAT_EQ(slowed(-0.5f, upAndDown), -0.33f);
    EXPECT_FLOAT_EQ(slowed(0.0153f, none), 0.0153f * 0.66f);
    EXPECT_EQ(slowed(0.0151f, none), 0);
    EXPECT_EQ(slowed(-0.0151f, none), 0);
    EXPECT_EQ(slowed(0.5f, bothWays), 0.5f);
    EXPECT_FLOAT_EQ(slowed(0.5f, right), 0.51f);
    EXPECT_FLOAT_EQ(slowed(0.005f, right), 0.015f);
}

TEST(Player, SteersByHundredthsAndBrakesByHalves) {
    const struct {
        float before;
        HeldKeys held;
        float after;
    } cases[] = {{0, right, 0.01f},       {0, left, -0.01f},          {0.5f, right, 0.51f},
                 {-0.5f, left, -0.51f},   {0.05f, left, 0.04f},       {-0.05f, right, -0.04f},
                 {0.051f, left, 0.0255f}, {-0.051f, right, -0.0255f}, {1, left, 0.5f},
                 {0.5f, bothWays, 0.5f},  {-0.5f, upAndDown, -0.5f}};
    for (const auto& [before, held, after] : cases) {
        EXPECT_FLOAT_EQ(step(openAir, {.x = 1.5f, .y = 1.5f, .vx = before}, held).vx, after)
            << before;
    }
}

TEST(Player, OutsideAKickNoAxisIsFasterThanOneTile) {
    EXPECT_EQ(step(openAir, {.x = 1, .y = 1.5f, .vx = 1}, right).vx, 1);
    EXPECT_EQ(step(openAir, {.x = 1, .y = 1.5f, .vx = -1}, left).vx, -1);
    EXPECT_EQ(step(openAir, {.x = 1, .y = 1.5f, .vy = 1}).vy, 1);
    EXPECT_EQ(step(openAir, {.x = 1, .y = 1.5f, .vy = -1.5f}).vy, -1);
}

TEST(Player, AWallStopsAndDropsTheFractionOfThePosition) {
    for (const std::string floor : {"###", "..."}) {
        for (const float vx : {0.25f, -0.25f}) {
            const std::string row = vx > 0 ? "..#\n" : "#..\n";
            const Motion stopped = step("...\n" + row + floor, {.x = 1.875f, .y = 1.5f, .vx = vx},
                                        vx > 0 ? right : left);
            EXPECT_EQ(stopped.vx, 0);
            EXPECT_EQ(stopped.x, 1);
        }
    }
    EXPECT_EQ(step(shaft, {.x = 1.875f, .y = 1.5f}).x, 1.875f); // not at rest
    EXPECT_EQ(step(wallLeft, {.x = 1.125f, .y = 1.5f, .vx = 0.25f}).vx, 0.25f);
    EXPECT_EQ(step(wallRight, {.x = 1.875f, .y = 1.5f, .vx = -0.25f}).vx, -0.25f);
    EXPECT_EQ(step("#.#\n...\n#.#", {.x = 1.5f, .y = 1.5f, .vx = 0.25f}).vx, 0.25f);
}

TEST(Player, AFlameBesideThrowsAwayAtOneTile) {
    const Motion thrownLeft = step("...\n..F\n###", {.x = 1.75f, .y = 1.5f, .vx = 0.25f}, right);
    EXPECT_EQ(thrownLeft.vx, -1);
    EXPECT_EQ(thrownLeft.x, 0);
    EXPECT_FALSE(thrownLeft.facingRight);
    const Motion thrownRight = step("...\nF..\n###", {.x = 1.75f, .y = 1.5f, .vx = -0.25f}, left);
    EXPECT_EQ(thrownRight.vx, 1);
    EXPECT_EQ(thrownRight.x, 2);
    // The wall behind is not asked in that step.
    EXPECT_EQ(step("...\n#.F\n...", {.x = 1.75f, .y = 1.5f, .vx = 0.25f}).x, 0);
    EXPECT_EQ(step("...\n#.F\n...", {.x = 1.75f, .y = 1.5f}).x, 1.75f);
}

TEST(Player, AFastKickPassesAWallThatIsNotNextToIt) {
    const std::string row = "....#...\n";
    const Motion passed =
        step(row + row + row, {.x = 2.5f, .y = 1.5f, .vx = 3, .vy = -0.5f, .kicking = true});
    EXPECT_EQ(passed.x, 5.5f);
    EXPECT_EQ(passed.vx, 3);
}

TEST(Player, FacesWhereItGoesAndKeepsFacingWhenStopped) {
    const auto facing = [](const std::string& drawing, float vx, const HeldKeys& held,
                           bool before) {
        return step(drawing, {.x = 1.5f, .y = 1.5f, .vx = vx, .facingRight = before}, held)
            .facingRight;
    };
    EXPECT_TRUE(facing(openAir, 0.25f, none, false));
    EXPECT_FALSE(facing(openAir, -0.25f, none, true));
    EXPECT_FALSE(facing(openAir, 0, none, false));
    EXPECT_TRUE(facing(openAir, 0, none, true));
    EXPECT_TRUE(facing(wallLeft, 0, left, true));   // against the wall it does not turn
    EXPECT_TRUE(facing(openAir, 0.5f, left, true)); // nor while it brakes
}

TEST(Player, OutsideTheGridAllIsRock) {
    // In an empty grid the runner stays where it is, whatever is pressed.
    const LevelMap nothing{LoadedImage()};
    Player player({60, 984});
    for (const HeldKeys& held : {none, left, right, bothWays, right, left}) {
        player.requestKick();
        player.update(held, nothing);
    }
    EXPECT_EQ(player.position().x, 60);
    EXPECT_EQ(player.position().y, 984);
    EXPECT_EQ(player.speed(), 0);

    // A coordinate just below 0 is cut to the first column or row.
    EXPECT_TRUE(step(openAir, {.x = -0.5f, .y = -0.5f}).airborne);
    EXPECT_FALSE(step(openAir, {.x = -1.5f, .y = 0.5f}).airborne);
    EXPECT_EQ(step(openAir, {.x = 0.5f, .y = 0.5f, .vx = -0.5f}).vx, 0);

    constexpr float infinity = std::numeric_limits<float>::infinity();
    for (const float far : {1e9f, 1e30f, infinity}) {
        EXPECT_EQ(step(openAir, {.x = far, .y = -far}, left).vx, 0);
        EXPECT_EQ(step(openAir, {.x = -far, .y = far}, right).vx, 0);
    }
}
