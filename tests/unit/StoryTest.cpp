// SPDX-License-Identifier: Zlib
// The screens around the play: what they draw, their keys, and when the music plays. The replays
// cover their times.
#include <algorithm>

#include "screens/Epilogue.h"
#include "screens/TitleScreen.h"
#include "sound/AudioSingleton.h"
#include "tests/support/ScreenFixture.h"

class Story : public ScreenFixture {
protected:
    // How many thumps some work started.
    static int thumpsIn(const std::function<void()>& work) {
        constexpr std::int32_t thumpBank = 4;
        for (int i = 0; i < 100 && Inspector::soundingVoices(sound(), thumpBank) > 0; ++i) {
            listen(4410);
        }
        work();
        return Inspector::soundingVoices(sound(), thumpBank) / 3;
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
    void drawFrames(int count) {
        for (int i = 0; i < count; ++i) draw();
    }
};

// --- the title

TEST_F(Story, ATitlePageIsDrawnBackToFrontAndItsTexturesAreMadeOnce) {
    enter<TitleScreen>();
    const Log sky = {"rect 0 0 1280 480 0 0 0 255",
                     "gradient 0 480 1280 1280 0 0 0 255 64 64 64 255", "blend 1",
                     "1024x1024 0 0 1.25 1.25 1 1 1 0.5", "blend 0"};
    const auto on = [&sky](const Log& more) {
        Log all = sky;
        all.insert(all.end(), more.begin(), more.end());
        return all;
    };
    const std::string line = " 128 400 1024 1 1 1 0 1";
    const std::string logo = "1024x720 128 0 1 1 1 1 1 1";
    const Log pages[] = {
        {"text " + line},
        {"text Trapped in a world which was never meant to be" + line},
        {"text Where nobody even remembers your name" + line},
        {"text You have only one hope to put right what once went wrong..." + line},
        {"text " + line, logo},
        {"text " + line, logo, "text Now go! Run! Tarnwick to the past! 128 640 1024 1 1 0 1 1"}};
    const char* keys[] = {"", "P1Up", "Action", "escape", "x"}; // any name turns the page
    for (std::size_t page = 0; page < 5; ++page) {
        drawFrames(page == 0 ? 28 : 117);
        EXPECT_EQ(draw(), on(pages[page])) << "the last frame but one of page " << page;
        EXPECT_EQ(thumpsIn([&] { press(keys[page]); }), 1);
        release(keys[page]);
        EXPECT_EQ(draw(), on(pages[page + 1])) << "page " << page + 1;
    }
    const std::uint64_t calls = GlStandIn::calls;
    enter<TitleScreen>();
    draw();
    EXPECT_EQ(GlStandIn::calls, calls);
}

TEST_F(Story, OnlyTheKeyAfterTheCallStartsThePlay) {
    enter<TitleScreen>();
    for (int key = 0; key < 5; ++key) pushKey(SDL_KEYDOWN, SDLK_q); // has no binding
    pushKey(SDL_KEYUP, SDLK_q);
    push(SDL_QUIT); // so that nothing is drawn
    EXPECT_FALSE(runFrame());
    EXPECT_EQ(state(), "TitleScreen") << "page 5";
    EXPECT_EQ(thumpsIn([this] { press("Action"); }), 0);
    EXPECT_EQ(state(), "GamePlay");

    enter<TitleScreen>();
    drawFrames(900);
    press("P1Down");
    EXPECT_EQ(state(), "GamePlay") << "from page 6";
}

TEST_F(Story, EscapeEndsTheProgramOnEveryTitlePage) {
    for (const int frames : {0, 30, 510, 630}) {
        SetUp();
        enter<TitleScreen>();
        drawFrames(frames);
        EXPECT_EQ(thumpsIn([this] { press("Escape"); }), 0);
        EXPECT_EQ(state(), "TitleScreen");
        EXPECT_FALSE(runFrame());
    }
}

// --- the music

TEST_F(Story, TheMusicLastsAsLongAsThePlayUnlessItIsOff) {
    constexpr std::int32_t threeBars = 3 * 2 * 44100; // samples; somewhat more than three bars
    for (const bool music : {true, false}) {
        std::vector<std::string> arguments = Inspector::quietArguments();
        if (!music) arguments.emplace_back("-nm");
        start(arguments);
        enter<TitleScreen>();
        EXPECT_EQ(thumpsIn([this] { press(""); }), 1);
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

TEST_F(Story, TheEpilogueIsDrawnBackToFront) {
    enter<Epilogue>();
    EXPECT_TRUE(draw().back().starts_with("rotated 8x8")) << "the vortex covers everything";
    EXPECT_EQ(named("rotated 16x16", drawer().calls).size(), 1u) << "a star of the fall";
    drawFrames(299);
    EXPECT_EQ(named("text TO", drawer().calls), Log{});
    Log names;
    for (const std::string& call : draw()) {
        const std::string name = call.substr(0, call.find(' '));
        if (names.empty() || names.back() != name) names.push_back(name);
    }
    EXPECT_EQ(names, (Log{"gradient", "blend", "1024x1024", "blend", "132x68", "36x36", "32x32",
                          "rotated", "text"}));
    const Log& calls = drawer().calls;
    EXPECT_EQ(calls[0], "gradient 0 0 1280 720 96 96 255 255 255 255 255 255");
    EXPECT_EQ(named("text", calls),
              (Log{"text No! it's not far enough back... 24 400 1280 1 0 0 0 1",
                   "text TO BE CONTINUED 360 200 1024 1 1 0 0 1"}));
}

TEST_F(Story, TheRunnerDropsInAndLandsWhateverIsPressed) {
    enter<Epilogue>();
    for (const char* action : {"P1Left", "P1Up", "P1Down", "escape"}) press(action);
    // The camera follows the runner, so the outlines of the tiles show its position.
    std::vector<Log> outlines;
    for (int frame = 0; frame < 180; ++frame) {
        press("Action");
        outlines.push_back(named("36x36", draw()));
    }
    EXPECT_FALSE(outlines.back().empty());
    EXPECT_NE(outlines[39], outlines[40]) << "it falls until the vortex has gone";
    EXPECT_EQ(std::count(outlines.begin() + 120, outlines.end(), outlines.back()), 60);
    Inspector::setState(*application, std::make_unique<Recorder>(*application, log));
    EXPECT_TRUE(runFrame()) << "none of the keys quits";
    enter<Epilogue>();
    press("Escape");
    EXPECT_FALSE(runFrame());
}
