// SPDX-License-Identifier: Zlib
// The play as a whole: the goal, the keys and the picture. The replays cover the shipped level.
#include <cmath>

#include "game/PlayRules.h"
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
        Inspector::setMotion(Inspector::player(*play), motion);
    }

    Motion motion() { return Inspector::motion(Inspector::player(*play)); }
    std::string held() const {
        const HeldKeys& keys = Inspector::heldKeys(*play);
        return std::string(keys.up ? "U" : "") + (keys.left ? "L" : "") + (keys.right ? "R" : "") +
               (keys.down ? "D" : "");
    }

    GamePlay* play = nullptr;
};

TEST_F(Play, OnlyTheGoalSpeedInAKickReachesTheGoal) {
    press("P1Right"); // against friction
    const std::pair<Motion, bool> cases[] = {
        {{10.25f, floorRow, std::nextafter(1.5f, 0.0f), 0, true, false, true}, false},
        {{10.25f, floorRow, 1.5f, 0, false, false, true}, false},
        {{10.25f, 2.25f, 1.0f, 1.4f, true, true, true}, true}}; // downward speed counts too
    for (const auto& [start, reached] : cases) {
        enterHall(start);
        draw();
        EXPECT_EQ(Inspector::isFinished(*play), reached) << start.vx << ", " << start.vy;
    }
}

TEST_F(Play, TheRunnerMovesInTheFrameThatReachesTheGoalAndNotAfterIt) {
    enterHall({10.25f, floorRow, 1.5f, 0, true, true, true});
    press("P1Right"); // against friction
    draw();
    EXPECT_EQ(motion().x, 11.75f);
    press("P1Left");
    press("Action");
    draw();
    EXPECT_EQ(motion().x, 11.75f);
    EXPECT_EQ(motion().y, floorRow);
    EXPECT_EQ(named("rotated 32x32", draw()).size(), 1u) << "the runner spins away";
    EXPECT_EQ(named("rect", drawer().calls),
              (Log{"rect 640 32 608 64 255 255 255 255", "rect 644 36 600 56 0 0 0 255",
                   "rect 648 40 450 48 255 0 0 255", "rect 1098 28 8 72 255 255 255 255"}))
        << "the speed display";
}

TEST_F(Play, DirectionsAreHeldUntilReleasedAndAnActionWaitsForTheFrame) {
    enterHall({10.25f, floorRow, 0, 0, false, false, true});
    const std::pair<const char*, const char*> keys[] = {
        {"P1Up", "U"}, {"P1Left", "L"}, {"P1Right", "R"}, {"P1Down", "D"}};
    for (const auto& [action, sign] : keys) {
        press(action);
        EXPECT_EQ(held(), sign);
        release(action);
        EXPECT_EQ(held(), "");
    }
    press("P1Left");
    press("Action");
    release("Action");
    EXPECT_EQ(held(), "L");
    EXPECT_EQ(motion().vy, 0);
    draw();
    EXPECT_LT(motion().vy, 0) << "the jump";
    press("Escape");
    EXPECT_FALSE(runFrame()) << "the end";
}

TEST_F(Play, TheEpilogueFollowsTheTwoHundredAndFirstFrameOfTheVortex) {
    enterHall({10.25f, 4.5f, 1.6f, -0.25f, true, true, true}); // in the air
    EXPECT_EQ(named("rotated 16x16", draw()).size(), 1u) << "a star of the flight";
    EXPECT_EQ(order(draw()), (Log{"gradient", "blend", "1024x1024", "blend", "132x68", "36x36",
                                  "rotated", "text", "rect", "rotated"}));
    EXPECT_EQ(drawer().calls[0], "gradient 0 0 1280 720 112 96 128 255 255 255 255 255");
    EXPECT_EQ(named("text", drawer().calls),
              (Log{"text Speed: 384 40 1024 1 1 1 1 1", "text 88mph 1024 112 512 1 1 1 1 1"}));
    int frames = 2;
    for (; frames < 300 && state() != "Epilogue"; ++frames) draw();
    EXPECT_EQ(frames, 201);
}
