// SPDX-License-Identifier: Zlib
// The screens around the play: what they draw and when, their keys, and when the music plays.
#include <algorithm>
#include <iterator>
#include <utility>

#include "screens/Epilogue.h"
#include "screens/TitleScreen.h"
#include "sound/AudioSingleton.h"
#include "tests/support/ScreenFixture.h"

class Story : public ScreenFixture {
protected:
    // How many thumps have started since the last silence.
    static int thumps() { return Inspector::soundingVoices(sound(), 4) / 3; }
    int thumpsOf(const char* key) {
        while (thumps() > 0) listen(4410);
        press(key);
        return thumps();
    }

    static AudioSingleton& sound() { return AudioSingleton::instance(); }
    static void listen(std::int32_t samples) {
        std::vector<float> output(static_cast<std::size_t>(samples) * 2);
        sound().process(output.data(), samples);
    }
    static bool isGridEmpty() {
        for (std::int32_t track = 0; track < AudioSingleton::tracks; ++track) {
            for (std::int32_t step = 0; step < AudioSingleton::steps; ++step) {
                if (Inspector::note(sound(), track, step) != AudioSingleton::rest) return false;
            }
        }
        return true;
    }
};

// --- the title

TEST_F(Story, ATitlePageIsDrawnBackToFrontAndItsTexturesAreMadeOnce) {
    enter<TitleScreen>();
    const Log sky = {"rect 0 0 1280 480 0 0 0 255",
                     "gradient 0 480 1280 1280 0 0 0 255 64 64 64 255", "blend 1",
                     "1024x1024 0 0 1.25 1.25 1 1 1 0.5", "blend 0"};
    const std::string line = " 128 400 1024 1 1 1 0 1";
    const std::string logo = "1024x720 128 0 1 1 1 1 1 1";
    const Log pages[] = {
        {"text " + line},
        {"text Trapped in a world which was never meant to be" + line},
        {"text Where nobody even remembers your name" + line},
        {"text You have only one hope to put right what once went wrong..." + line},
        {logo, "text " + line},
        {logo, "text " + line, "text Now go! Run! Tarnwick to the past! 128 640 1024 1 1 0 1 1"}};
    for (const Log& page : pages) {
        Log expected = sky;
        expected.insert(expected.end(), page.begin(), page.end());
        EXPECT_EQ(draw(), expected);
        EXPECT_EQ(thumpsOf("P1Up"), page == pages[5] ? 0 : 1);
    }
    EXPECT_EQ(state(), "GamePlay");
    const std::uint64_t calls = GlStandIn::calls;
    enter<TitleScreen>();
    draw();
    EXPECT_EQ(GlStandIn::calls, calls);
}

TEST_F(Story, TitlePagesTurnByThemselvesUntilTheLastOneWhereAnyKeyStartsThePlay) {
    enter<TitleScreen>();
    while (thumps() > 0) listen(4410);
    std::vector<int> turns;
    Log before = draw();
    for (int frame = 1; frame < 900; ++frame) {
        if (std::exchange(before, draw()) == drawer().calls) continue;
        turns.push_back(frame);
        EXPECT_EQ(thumps(), std::ssize(turns));
    }
    EXPECT_EQ(turns, (std::vector{30, 150, 270, 390, 510}));
    EXPECT_EQ(thumps(), 5);
    press("");
    EXPECT_EQ(state(), "GamePlay");
}

TEST_F(Story, EscapeEndsTheTitle) {
    enter<TitleScreen>();
    EXPECT_EQ(thumpsOf("Escape"), 0);
    EXPECT_FALSE(runFrame()) << "the end";
}

// --- the music

TEST_F(Story, TheMusicLastsAsLongAsThePlayUnlessItIsOff) {
    constexpr std::int32_t threeBars = 3 * 2 * 44100; // samples; somewhat more than three bars
    for (const bool music : {true, false}) {
        std::vector<std::string> arguments = Inspector::quietArguments();
        if (!music) arguments.emplace_back("-nm");
        start(arguments);
        enter<TitleScreen>();
        EXPECT_EQ(thumpsOf(""), 1);
        EXPECT_TRUE(isGridEmpty());
        application->changeState("GamePlay", "");
        EXPECT_EQ(isGridEmpty(), !music);
        listen(threeBars);
        EXPECT_EQ(Inspector::note(sound(), 1, 0) == AudioSingleton::rest, !music) << "bar events";
        application->changeState("Epilogue", "");
        listen(threeBars);
        EXPECT_TRUE(isGridEmpty());
    }
}

// --- the epilogue

TEST_F(Story, InTheEpilogueTheRunnerDropsInWhateverIsPressed) {
    enter<Epilogue>();
    while (thumps() > 0) listen(4410);
    EXPECT_TRUE(draw().back().starts_with("rotated 8x8")) << "the vortex covers everything";
    EXPECT_EQ(named("rotated 16x16", drawer().calls).size(), 1u) << "a star of the fall";
    // The camera follows the runner, so the outlines of the tiles show its position.
    std::vector<Log> outlines;
    int messages = 0;
    for (int frame = 1; frame < 300; ++frame) {
        EXPECT_EQ(thumps(), 0);
        for (const char* action : {"P1Left", "P1Up", "Action"}) press(action);
        outlines.push_back(named("36x36", draw()));
        messages += drawer().calls.back().starts_with("text No!");
    }
    EXPECT_EQ(messages, 120) << "from frame 180 on";
    EXPECT_EQ(thumps(), 1) << "in the frame before the last text";
    EXPECT_NE(outlines[39], outlines[40]) << "it falls until the vortex has gone";
    EXPECT_EQ(std::count(outlines.begin(), outlines.end(), outlines.back()), 223);
    EXPECT_EQ(order(draw()), (Log{"gradient", "blend", "1024x1024", "blend", "132x68", "36x36",
                                  "32x32", "rotated", "text"}));
    EXPECT_EQ(drawer().calls[0], "gradient 0 0 1280 720 96 96 255 255 255 255 255 255");
    EXPECT_EQ(named("text", drawer().calls),
              (Log{"text No! it's not far enough back... 24 400 1280 1 0 0 0 1",
                   "text TO BE CONTINUED 360 200 1024 1 1 0 0 1"}));
    press("Escape");
    EXPECT_FALSE(runFrame());
}
