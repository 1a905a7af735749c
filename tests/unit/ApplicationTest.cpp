// SPDX-License-Identifier: Zlib
// The main loop: which events reach the screen, when frames are drawn, and how screens change.
#include <array>
#include <cstring>

#include "base/Noise.h"
#include "drawing/ImageLoader.h"
#include "drawing/OpenGLDrawer.h"
#include "screens/GamePlay.h"
#include "tests/support/ApplicationFixture.h"

class MainLoop : public ApplicationFixture {
protected:
    static void pushMotion(Uint16 x, Uint16 y) {
        push({.motion = {SDL_MOUSEMOTION, 0, 0, x, y, 0, 0}});
    }
    static void pushButton(Uint8 type, Uint8 button, Uint16 x, Uint16 y) {
        push({.button = {type, 0, button, 0, x, y}});
    }
    void setWindow(std::int32_t width, std::int32_t height) {
        Inspector::setWindowSize(*application, width, height);
    }
};

TEST_F(MainLoop, MousePlacesAreScaledToUnitsAndCutToWholeOnes) {
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);
    setWindow(800, 600);
    pushMotion(400, 300);
    pushMotion(799, 195); // 1278.4, and 233.99999 in the game's floats
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 400, 300);
    pushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_RIGHT, 1, 599);
    // The wheel turns on press, and is a button on release.
    for (const Uint8 button : {Uint8{SDL_BUTTON_WHEELUP}, Uint8{SDL_BUTTON_WHEELDOWN}}) {
        pushButton(SDL_MOUSEBUTTONDOWN, button, 400, 300);
        pushButton(SDL_MOUSEBUTTONUP, button, 400, 300);
    }
    EXPECT_EQ(heardInFrame(),
              (Log{"moved 640 360", "moved 1278 233", "down 1 640 360", "up 3 1 718", "wheel 0",
                   "up 4 640 360", "wheel 1", "up 5 640 360", "draw"}));
    setWindow(0, 0); // gives a place all the same
    pushMotion(0, 0);
    pushMotion(100, 65535);
    EXPECT_EQ(heardInFrame(), (Log{"moved 0 0", "moved 0 0", "draw"}));
}

TEST_F(MainLoop, QuitEndsTheLoopBeforeTheNextFrameButNotBeforeTheEventsThatWait) {
    for (const bool byKey : {true, false}) { // Escape, and the window's button
        SetUp();
        EXPECT_TRUE(runFrame());
        const std::uint32_t shown = GlStandIn::swaps;
        log.clear();
        GlStandIn::waits.clear();
        byKey ? pushKey(SDL_KEYDOWN, SDLK_ESCAPE) : pushQuit();
        pushKey(SDL_KEYDOWN, SDLK_UP);
        application->run();
        EXPECT_EQ(log, byKey ? (Log{"pressed Escape", "pressed P1Up"}) : Log{"pressed P1Up"});
        EXPECT_EQ(GlStandIn::swaps, shown);
        EXPECT_TRUE(GlStandIn::waits.empty()) << "nor is there a wait for it";
    }
}

TEST_F(MainLoop, EventsThatNobodyReadsAreDroppedAndWithoutAScreenAllAre) {
    for (const Uint8 type : {SDL_ACTIVEEVENT, SDL_VIDEORESIZE, SDL_VIDEOEXPOSE, SDL_JOYHATMOTION,
                             SDL_JOYBALLMOTION, SDL_USEREVENT}) {
        push(type);
    }
    EXPECT_EQ(heardInFrame(), Log{"draw"});

    Inspector::setState(*application, nullptr);
    for (const Uint8 type :
         {SDL_KEYDOWN, SDL_KEYUP, SDL_MOUSEMOTION, SDL_MOUSEBUTTONDOWN, SDL_MOUSEBUTTONUP,
          SDL_JOYAXISMOTION, SDL_JOYBUTTONDOWN, SDL_JOYBUTTONUP}) {
        push(type);
    }
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_WHEELUP, 1, 1);
    const std::uint32_t shown = GlStandIn::swaps;
    EXPECT_TRUE(runFrame());
    EXPECT_EQ(GlStandIn::swaps, shown + 1);
}

// --- the glyph font

// Keeps the glyph images that it is given.
class GlyphKeeper : public OpenGLDrawer {
public:
    using Glyphs = std::array<LoadedImage, 44>;

    explicit GlyphKeeper(Glyphs& given) : OpenGLDrawer(1280, 720), glyphs(given) {}

    void setGlyphImage(int index, PixelBuffer pixels, std::uint32_t size) override {
        glyphs.at(static_cast<std::size_t>(index)) = {std::move(pixels), size, size};
    }

private:
    Glyphs& glyphs;
};

TEST_F(MainLoop, GivesEachCharacterItsPictureBeforeTheFirstFrame) {
    GlyphKeeper::Glyphs glyphs;
    Inspector::setDrawer(*application, std::make_unique<GlyphKeeper>(glyphs));
    pushQuit();
    application->run();

    std::vector<std::string> names = {"period",      "comma",    "plus", "minus",
                                      "exclamation", "question", "colon"};
    const std::string characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    for (auto sign = characters.rbegin(); sign != characters.rend(); ++sign) {
        names.insert(names.begin(), std::string(1, *sign));
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        const LoadedImage file = ImageLoader().loadFromFile(GLYPH_PICTURES "/" + names[i] + ".png");
        ASSERT_TRUE(file.pixels && glyphs[i].pixels) << names[i];
        ASSERT_EQ(glyphs[i].width, file.width) << names[i];
        const std::size_t bytes = std::size_t{file.width} * file.height * 4;
        EXPECT_EQ(std::memcmp(file.pixels.get(), glyphs[i].pixels.get(), bytes), 0) << names[i];
    }
    EXPECT_FALSE(glyphs[43].pixels) << "the last stays the drawer's own";
}

// --- the distance of frames

class Pacing : public ApplicationFixture {
protected:
    // The wait of a frame that begins so many ms after the last one; -1 if it does not wait.
    int waitAfter(std::uint32_t gap) {
        GlStandIn::clock += gap;
        GlStandIn::waits.clear();
        runFrame();
        EXPECT_LE(GlStandIn::waits.size(), 1u);
        return GlStandIn::waits.empty() ? -1 : static_cast<int>(GlStandIn::waits[0]);
    }
};

TEST_F(Pacing, FramesAreHeldFifteenMillisecondsApart) {
    EXPECT_EQ(waitAfter(0), -1) << "the first frame of all";
    EXPECT_EQ(waitAfter(0), 15);
    EXPECT_EQ(waitAfter(1), 14);
    EXPECT_EQ(waitAfter(14), 1);
    EXPECT_EQ(waitAfter(15), -1);
    EXPECT_EQ(waitAfter(16), -1);
    EXPECT_EQ(waitAfter(14), 1);
    EXPECT_EQ(waitAfter(100000), -1) << "a slow frame is not caught up with";
    const std::uint32_t start = GlStandIn::clock;
    for (int frame = 0; frame < 100; ++frame) waitAfter(frame % 3);
    EXPECT_EQ(GlStandIn::clock - start, 1500u) << "a quick machine stays at one speed";
}

TEST_F(Pacing, TheClockMayWrap) {
    GlStandIn::clock = 0xFFFFFFF8; // 8 ms before it starts again
    waitAfter(0);
    EXPECT_EQ(waitAfter(3), 12) << "in the wait";
    EXPECT_EQ(GlStandIn::clock, 7u);
    GlStandIn::clock = 0xFFFFFFF8;
    waitAfter(0);
    EXPECT_EQ(waitAfter(10), 5) << "between two frames";
    EXPECT_EQ(GlStandIn::clock, 7u);
    EXPECT_EQ(waitAfter(14), 1);
    EXPECT_EQ(waitAfter(30), -1);
}

// --- changes of the screen

class StateChange : public ApplicationFixture {
protected:
    // Asks for another screen, with texts of its own, when it is drawn or a key is pressed.
    class Leaving : public Recorder {
    public:
        Leaving(Application& owner, Log& heard, std::string wanted, bool onDraw)
            : Recorder(owner, heard), name(std::move(wanted)), leavesOnDraw(onDraw) {}
        ~Leaving() override { log.push_back("gone, seed " + std::to_string(noiseSeed())); }

        void draw(Drawer& drawer) override {
            Recorder::draw(drawer);
            if (leavesOnDraw) changeState(name, name);
        }
        void keyPressed(const std::string& action, const SDL_keysym* key) override {
            Recorder::keyPressed(action, key);
            changeState(name, name);
        }

    private:
        std::string name;
        bool leavesOnDraw;
    };

    void enter(const std::string& wanted, bool onDraw) {
        Inspector::setState(*application,
                            std::make_unique<Leaving>(*application, log, wanted, onDraw));
        log.clear();
        noiseSeed() = 5000; // the play's clouds use it up as it is built
    }
    GamePlay* play() { return dynamic_cast<GamePlay*>(Inspector::state(*application)); }
};

TEST_F(StateChange, OnAnEventTheRestOfTheEventsAndTheFrameAreTheNewScreens) {
    enter("GamePlay", false);
    pushKey(SDL_KEYDOWN, SDLK_LEFT);
    pushKey(SDL_KEYDOWN, SDLK_UP);
    const std::uint64_t calls = GlStandIn::calls;
    EXPECT_TRUE(runFrame());
    EXPECT_EQ(log, (Log{"pressed P1Left", "gone, seed 5000"})) << "gone before the new one is made";
    EXPECT_GT(GlStandIn::calls, calls + 100) << "the play was drawn";
    ASSERT_NE(play(), nullptr);
    EXPECT_FALSE(Inspector::heldKeys(*play()).left);
    EXPECT_TRUE(Inspector::heldKeys(*play()).up);
}

TEST_F(StateChange, InDrawingTheFrameIsFinishedAndTheNewScreenComesWithTheNext) {
    enter("GamePlay", true);
    const std::uint64_t calls = GlStandIn::calls;
    const std::uint32_t shown = GlStandIn::swaps;
    EXPECT_TRUE(runFrame());
    EXPECT_EQ(log, (Log{"draw", "gone, seed 5000"}));
    EXPECT_EQ(GlStandIn::swaps, shown + 1);
    EXPECT_LT(GlStandIn::calls, calls + 10) << "the play was not drawn yet";
    ASSERT_NE(play(), nullptr);
    EXPECT_TRUE(runFrame());
    EXPECT_GT(GlStandIn::calls, calls + 100);
}

TEST_F(StateChange, ANameThatIsNotKnownToTheLetterChangesNothing) {
    for (const char* name : {"", "gameplay", "GamePlay ", " GamePlay", "Recorder"}) {
        enter(name, true);
        EXPECT_TRUE(runFrame());
        EXPECT_EQ(log, Log{"draw"}) << name << ", and it is not gone";
    }
    Inspector::setState(*application, nullptr);
    application->changeState("GamePlay", ""); // from no screen at all
    EXPECT_NE(play(), nullptr);
}
