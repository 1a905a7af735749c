// SPDX-License-Identifier: Zlib
// The screens around the play: what they paint, what keys do to them, and the music between them.
// Their times are proven by replays.
#include <algorithm>

#include "screens/Epilogue.h"
#include "screens/TitleScreen.h"
#include "sound/AudioSingleton.h"
#include "tests/support/ScreenFixture.h"

class Story : public ScreenFixture {
protected:
    template <typename Screen>
    void enter() {
        ScreenFixture::enter<Screen>();
        frame = 0;
    }

    // Frames count from 1.
    const Calls& draw() {
        ++frame;
        return ScreenFixture::draw();
    }

    // How often the thump was begun by some work.
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

    // Names of what is painted, repetitions left out.
    static Log order(const Calls& calls) {
        Log names;
        for (const Call& call : calls) {
            if (names.empty() || names.back() != call.name) names.push_back(call.name);
        }
        return names;
    }

    int frame = 0;
};

// --- the title

class Title : public Story {
protected:
    void SetUp() override {
        Story::SetUp();
        enter<TitleScreen>();
    }

    // What a page shows besides the sky: logo and texts.
    Log shown() {
        Log shown;
        for (const Call& call : draw()) {
            if (call.name == logo) shown.emplace_back(logo);
            if (call.name.starts_with("text ") && call.name != "text ") {
                shown.push_back(call.name.substr(5));
            }
        }
        return shown;
    }
    void drawFrames(int count) {
        for (int i = 0; i < count; ++i) draw();
    }

    static constexpr const char* logo = "1024x720";
    static inline const std::array<Log, 6> pages = {
        {{},
         {"Trapped in a world which was never meant to be"},
         {"Where nobody even remembers your name"},
         {"You have only one hope to put right what once went wrong..."},
         {logo},
         {logo, "Now go! Run! Tarnwick to the past!"}}};
};

TEST_F(Title, PaintsFromTheBackToTheFront) {
    Calls expected = {
        {"rect", {0, 0, 1280, 480, 0, 0, 0, 255}},
        {"gradient", {0, 480, 1280, 1280, 0, 0, 0, 255, 64, 64, 64, 255}},
        {"blend", {1}},
        {"1024x1024", {0, 0, 1.25f, 1.25f, 1, 1, 1, 0.5f}},
        {"blend", {0}},
    };
    press("");
    const Calls first = draw();
    ASSERT_EQ(first.size(), 6u);
    const float font = first[5].numbers[0];
    EXPECT_GE(font, 1) << "a font of its own";
    const auto line = [font](const std::string& text) {
        return Call{"text " + text, {font, 128, 400, 1024, 1, 1, 1, 0, 1}};
    };
    expected.push_back(line(pages[1][0]));
    EXPECT_EQ(first, expected);

    for (int page = 2; page <= 5; ++page) press("");
    expected.back() = line("");
    expected.push_back({logo, {128, 0, 1, 1, 1, 1, 1, 1}});
    expected.push_back({"text " + pages[5][1], {font, 128, 640, 1024, 1, 1, 0, 1, 1}});
    EXPECT_EQ(draw(), expected);
}

TEST_F(Title, PicturesAndFontAreMadeOnceInTheProgram) {
    draw();
    enter<TitleScreen>();
    const std::uint64_t calls = GlStandIn::calls;
    draw();
    EXPECT_EQ(GlStandIn::calls, calls);
}

TEST_F(Title, AKeyTurnsThePageAtOnceAndGivesItItsFullTime) {
    const char* keys[] = {"", "P1Up", "Action", "escape"}; // whatever its name
    for (std::size_t page = 0; page < 4; ++page) {
        drawFrames(page == 0 ? 29 : 118); // the next frame would turn it
        ASSERT_EQ(thumpsIn([&] { press(keys[page]); }), 1);
        release(keys[page]);
        ASSERT_EQ(shown(), pages[page + 1]);
    }
    drawFrames(118);
    ASSERT_EQ(shown(), pages[4]) << "the 120th frame of the page";
    ASSERT_EQ(shown(), pages[5]);
}

TEST_F(Title, OnlyTheKeyAfterTheCallStartsThePlayButThenAtOnce) {
    for (int key = 0; key < 5; ++key) pushKey(SDL_KEYDOWN, SDLK_q); // bound to nothing
    pushKey(SDL_KEYUP, SDLK_q);
    pushQuit(); // so that nothing is drawn
    EXPECT_FALSE(runFrame());
    EXPECT_EQ(state(), "TitleScreen") << "page 5";
    EXPECT_EQ(thumpsIn([this] { press("Action"); }), 0) << "without a frame between";
    EXPECT_EQ(state(), "GamePlay");

    enter<TitleScreen>();
    drawFrames(900);
    press("P1Down");
    EXPECT_EQ(state(), "GamePlay") << "from page 6";
    int delay = -1;
    int interval = -1;
    SDL_GetKeyRepeat(&delay, &interval);
    EXPECT_EQ(delay, 0) << "a held key counts once";
}

TEST_F(Title, EscapeEndsTheProgramOnEveryPage) {
    for (const int frames : {0, 30, 150, 270, 390, 510, 630}) {
        SetUp();
        drawFrames(frames);
        EXPECT_EQ(thumpsIn([this] { press("Escape"); }), 0);
        EXPECT_EQ(state(), "TitleScreen");
        EXPECT_FALSE(runFrame());
    }
}

// --- the music's begin and end

TEST_F(Story, TheMusicLastsAsLongAsThePlayUnlessThereIsNone) {
    constexpr std::int32_t threeBars = 3 * 2 * 44100; // samples, and somewhat more
    for (const bool music : {true, false}) {
        application.reset();
        std::vector<std::string> arguments = Inspector::quietArguments();
        if (!music) arguments.emplace_back("-nm");
        makeApplication(arguments);
        EXPECT_EQ(thumpsIn([this] { press(""); }), 1) << "of the title";
        EXPECT_TRUE(isGridEmpty());
        application->changeState("GamePlay", "");
        EXPECT_EQ(isGridEmpty(), !music);
        listen(threeBars);
        EXPECT_EQ(isGridEmpty(), !music);
        EXPECT_EQ(Inspector::note(sound(), 1, 0) == AudioSingleton::rest, !music) << "bars";
        application->changeState("Epilogue", "");
        EXPECT_TRUE(isGridEmpty());
        listen(threeBars);
        EXPECT_TRUE(isGridEmpty()) << "no bars any more";
    }
}

// --- the epilogue

class Ending : public Story {
protected:
    void SetUp() override {
        Story::SetUp();
        enter<Epilogue>();
    }

    static constexpr const char* message = "text No! it's not far enough back...";
    static constexpr const char* last = "text TO BE CONTINUED";
};

TEST_F(Ending, PaintsFromTheBackToTheFront) {
    const Log first = order(draw());
    EXPECT_EQ(first.back(), "turned 8x8") << "the vortex, over all else";
    EXPECT_EQ(std::count(first.begin(), first.end(), "turned 16x16"), 1) << "a star of the fall";
    while (frame < 301) draw();
    const Calls& calls = drawer().calls;
    EXPECT_EQ(order(calls), (Log{"gradient", "blend", "1024x1024", "blend", "132x68", "36x36",
                                 "32x32", "turned 8x8", message, last}));
    EXPECT_EQ(calls[0],
              (Call{"gradient", {0, 0, 1280, 720, 96, 96, 255, 255, 255, 255, 255, 255}}));
    const float font = calls.back().numbers[0];
    EXPECT_GE(font, 1) << "a font of its own";
    EXPECT_EQ(calls[calls.size() - 2], (Call{message, {font, 24, 400, 1280, 1, 0, 0, 0, 1}}));
    EXPECT_EQ(calls.back(), (Call{last, {font, 360, 200, 1024, 1, 1, 0, 0, 1}}));
}

TEST_F(Ending, TheRunnerDropsInAndLandsBeforeTheFirstTextWhateverIsPressed) {
    // The outlines of tiles tell where the runner is: the camera is tied to it.
    const auto outlines = [](const Calls& calls) {
        Calls tiles;
        for (const Call& call : calls) {
            if (call.name == "36x36") tiles.push_back(call);
        }
        return tiles;
    };
    std::vector<Calls> untouched;
    while (frame < 180) untouched.push_back(outlines(draw()));
    EXPECT_FALSE(untouched.back().empty()) << "it stands on what can be seen";
    const auto landing = std::find(untouched.begin(), untouched.end(), untouched.back());
    EXPECT_EQ(std::count(landing, untouched.end(), untouched.back()), untouched.end() - landing);
    EXPECT_GT(landing - untouched.begin(), 40) << "after the vortex is gone";
    EXPECT_LT(landing - untouched.begin(), 120) << "well before the text";

    enter<Epilogue>();
    for (const char* action : {"P1Left", "P1Up", "P1Down", "Action", "", "escape"}) press(action);
    for (const Calls& expected : untouched) {
        press("Action");
        ASSERT_EQ(outlines(draw()), expected) << "frame " << frame;
    }
    EXPECT_EQ(state(), "Epilogue");
    Inspector::setState(*application, std::make_unique<Recorder>(*application, log));
    EXPECT_TRUE(runFrame()) << "nor does one of them end the program";
    enter<Epilogue>();
    press("Escape");
    EXPECT_FALSE(runFrame());
}
