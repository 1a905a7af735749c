// SPDX-License-Identifier: Zlib
// The play as a whole: the goal and the keys. What it shows is PlayPictureTest's, and how it begins
// in the shipped level a replay's.
#include <algorithm>
#include <cmath>

#include "screens/GamePlay.h"
#include "tests/support/DrawnGrid.h"
#include "tests/support/ScreenFixture.h"

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
    draw();
    EXPECT_TRUE(isFinished());
    EXPECT_EQ(motion().x, 11.75f) << "the step itself still counts";
    release("P1Right");
    for (const char* const action : {"P1Left", "P1Down", "Action"}) press(action);
    for (int frame = 0; frame < 5; ++frame) draw();
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

// --- no level

TEST_F(Play, WithoutALevelTheRunnerStandsStillInRock) {
    Inspector::setLevel(*play, [] { return LevelMap(LoadedImage()); });
    press("P1Right");
    for (int frame = 0; frame < 50; ++frame) {
        press("Action");
        const Calls& calls = draw();
        EXPECT_TRUE(std::none_of(calls.begin(), calls.end(), [](const Call& call) {
            return call.name == "36x36";
        })) << "there is no rock to paint";
    }
    EXPECT_EQ(motion().x, 60);
    EXPECT_EQ(motion().y, 984);
    EXPECT_FALSE(isFinished());
    press("Escape");
    EXPECT_FALSE(runFrame());
}
