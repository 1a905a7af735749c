// SPDX-License-Identifier: Zlib
// The play as a whole: the goal and the keys. What it shows on its way is PlayPictureTest's.
#include <algorithm>
#include <cmath>

#include "game/GamePlay.h"
#include "tests/DrawnGrid.h"
#include "tests/ScreenFixture.h"

static constexpr float floorRow = 8; // the runner's row when it stands in the hall

static LevelMap hall() {
    const std::string rock = std::string(50, '#') + "\n";
    std::string drawing = rock;
    for (int row = 1; row <= 8; ++row) drawing += "#" + std::string(48, '.') + "#\n";
    return drawnGrid(drawing + rock);
}

class Play : public ScreenFixture {
protected:
    using Motion = Inspector::Motion;

    void SetUp() override {
        ScreenFixture::SetUp();
        play = enter<GamePlay>();
    }

    void enterHall(const Motion& motion) {
        Inspector::setLevel(*play, hall);
        Inspector::setMotion(player(), motion);
    }
    // In a kick that reaches the goal in the next frame, in the air.
    void enterHallAtTheGoal() { enterHall({10.25f, 4.5f, 1.6f, -0.25f, true, true, true}); }

    static long count(const Calls& calls, const std::string& name) {
        return std::count_if(calls.begin(), calls.end(),
                             [&](const Call& call) { return call.name == name; });
    }

    static float barWidth(const Calls& calls) {
        const auto bar = std::find_if(calls.begin(), calls.end(), [](const Call& call) {
            return call.name == "rect" && call.numbers[5] == 0 && call.numbers[4] == 255;
        });
        return bar == calls.end() ? -1 : bar->numbers[2];
    }

    Player& player() { return Inspector::player(*play); }
    Motion motion() { return Inspector::motion(player()); }
    bool isFinished() const { return Inspector::isFinished(*play); }
    std::string held() const {
        const HeldKeys& keys = Inspector::heldKeys(*play);
        return std::string(keys.up ? "U" : "") + (keys.left ? "L" : "") + (keys.right ? "R" : "") +
               (keys.down ? "D" : "");
    }

    GamePlay* play = nullptr;
};

// --- what is painted

TEST_F(Play, TheCameraHoldsTheRunnersTileInPlace) {
    // The outline stands out by 4 units around the tile under the runner.
    for (const auto& [x, outlineX] : {std::pair(10.0f, 604.0f), std::pair(10.25f, 588.0f)}) {
        enterHall({x, floorRow, 0, 0, false, false, true});
        const Calls& calls = draw();
        EXPECT_EQ(std::count(calls.begin(), calls.end(),
                             Call{"36x36", {outlineX, 540, 2, 2, 1, 1, 1, 1}}),
                  1);
    }
}

// --- the goal

TEST_F(Play, TheGoalIsOneAndAHalfTilesAFrameInAKickAndNothingElse) {
    press("P1Right"); // against friction
    const std::pair<Motion, bool> cases[] = {
        {{10.25f, floorRow, std::nextafter(1.5f, 0.0f), 0, true, false, true}, false},
        {{10.25f, floorRow, 1.5f, 0, false, false, true}, false},
        {{10.25f, 2.25f, 1.0f, 1.4f, true, true, true}, true}}; // downward counts too
    for (const auto& [start, reached] : cases) {
        enterHall(start);
        draw();
        EXPECT_EQ(isFinished(), reached) << start.vx << ", " << start.vy;
    }
}

TEST_F(Play, TheFrameThatReachesTheGoalIsTheRunnersLast) {
    enterHall({10.25f, floorRow, 1.5f, 0, true, true, true});
    press("P1Right"); // against friction
    const Calls& calls = draw();
    EXPECT_TRUE(isFinished());
    EXPECT_EQ(motion().x, 11.75f) << "the step itself still counts";
    EXPECT_EQ(barWidth(calls), 450) << "the bar ends at the mark";
    EXPECT_EQ(calls.back().name, "turned 8x8") << "the vortex, over all else";
    EXPECT_EQ(count(calls, "turned 32x32"), 1) << "the runner spins already";
    EXPECT_EQ(count(calls, "turned 16x16"), 1) << "the star of this frame is still laid";
    release("P1Right");
    for (const char* const action : {"P1Left", "P1Down", "Action"}) press(action);
    for (int frame = 0; frame < 5; ++frame) {
        const Calls& later = draw();
        EXPECT_EQ(count(later, "turned 16x16"), 1) << "no further one";
        EXPECT_EQ(barWidth(later), 450);
    }
    EXPECT_EQ(motion().x, 11.75f);
    EXPECT_EQ(motion().y, floorRow);
    EXPECT_TRUE(motion().kicking);
    EXPECT_EQ(held(), "LD") << "the keys do not rest";
}

TEST_F(Play, TheEpilogueIsAskedForInThe201stDrawingOfTheVortex) {
    enterHallAtTheGoal();
    int drawings = 0;
    for (; drawings < 300 && state() != "Epilogue"; ++drawings) draw();
    EXPECT_EQ(drawings, 201);
}

// --- keys

TEST_F(Play, DirectionKeysAreHeldUntilTheyAreReleased) {
    const std::pair<const char*, const char*> keys[] = {
        {"P1Up", "U"}, {"P1Left", "L"}, {"P1Right", "R"}, {"P1Down", "D"}};
    for (const auto& [action, sign] : keys) {
        release(action);
        EXPECT_EQ(held(), "") << "a release without a press does no harm";
        press(action);
        EXPECT_EQ(held(), sign);
        press(action);
        release(action);
        EXPECT_EQ(held(), "");
    }
    press("P1Left");
    press("P1Right");
    for (const char* other : {"", "p1left", "P1Left ", "Action", "Up", "escape"}) {
        press(other);
        release(other);
    }
    EXPECT_EQ(held(), "LR");
    EXPECT_TRUE(runFrame()) << "none of them quits";
}

TEST_F(Play, AnActionIsKeptThoughItsKeyIsReleased) {
    enterHall({10.25f, floorRow, 0, 0, false, false, true});
    press("Action");
    release("Action");
    EXPECT_EQ(motion().vy, 0) << "the frame steps, not the key";
    draw();
    EXPECT_LT(motion().vy, 0);
}

TEST_F(Play, EscapeEndsTheProgramBeforeTheGoalAndAfterIt) {
    press("Escape");
    EXPECT_FALSE(runFrame());

    SetUp();
    enterHallAtTheGoal();
    draw();
    ASSERT_TRUE(isFinished());
    press("Escape");
    EXPECT_FALSE(runFrame());
}

// --- levels

TEST_F(Play, BeginsInTheOpenOfTheShippedLevel) {
    const LevelMap& level = Inspector::level(*play);
    EXPECT_GE(level.getWidth(), 62u);
    EXPECT_GE(level.getHeight(), 986u);
    EXPECT_EQ(level.at(60, 984), LevelMap::empty);
    EXPECT_EQ(motion().x, 60);
    EXPECT_EQ(motion().y, 984);
    for (int frame = 0; frame < 100; ++frame) draw();
    EXPECT_EQ(motion().x, 60) << "the runner waits for its keys";
    EXPECT_NE(level.at(60, static_cast<int>(motion().y) + 1), LevelMap::empty) << "on the ground";
    EXPECT_FALSE(isFinished());
}

TEST_F(Play, WithoutALevelTheRunnerStandsStillInRock) {
    Inspector::setLevel(*play, [] { return LevelMap(LoadedImage()); });
    press("P1Right");
    for (int frame = 0; frame < 50; ++frame) {
        press("Action");
        EXPECT_EQ(count(draw(), "36x36"), 0) << "there is no rock to paint";
    }
    EXPECT_EQ(motion().x, 60);
    EXPECT_EQ(motion().y, 984);
    EXPECT_FALSE(isFinished());
    press("Escape");
    EXPECT_FALSE(runFrame());
}
