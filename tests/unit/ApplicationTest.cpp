// SPDX-License-Identifier: Zlib
// The application: start and end, which events reach the screen, when frames are drawn, and how
// screens change.
#include "base/Noise.h"
#include "drawing/OpenGLDrawer.h"
#include "screens/GamePlay.h"
#include "tests/support/ApplicationFixture.h"
#include "tests/support/FakePortAudio.h"

// --- start and end

// SDL's calls go into the same list as PortAudio's.
static void noteCall(const std::string& call) {
    FakePortAudio::current().calls.push_back(call);
}

extern "C" {
int __real_SDL_Init(Uint32 flags);
void __real_SDL_Quit();

int __wrap_SDL_Init(Uint32 flags) {
    noteCall("SDL_Init");
    return __real_SDL_Init(flags);
}
void __wrap_SDL_Quit() {
    noteCall("SDL_Quit");
    __real_SDL_Quit();
}
void __wrap_SDL_WM_SetCaption(const char* title, const char* /*icon*/) {
    noteCall(std::string("caption ") + title);
}
int __wrap_SDL_NumJoysticks() {
    return 2;
}
int __wrap_SDL_JoystickEventState(int state) {
    noteCall("joystick events " + std::to_string(state));
    return state;
}
SDL_Joystick* __wrap_SDL_JoystickOpen(int index) {
    noteCall("open joystick " + std::to_string(index));
    return nullptr;
}
void __wrap_SDL_JoystickClose(SDL_Joystick* /*joystick*/) {
    noteCall("close joystick");
}
}

class StartAndEnd : public ApplicationFixture {
protected:
    struct LastScreen : Recorder {
        using Recorder::Recorder;
        ~LastScreen() override { noteCall("delete screen"); }
    };
};

TEST_F(StartAndEnd, LibrariesAreOpenedAndClosedInOrder) {
    application.reset();
    FakePortAudio& libraries = FakePortAudio::renew();
    libraries.addApi(paALSA, "ALSA", 0, 1);
    GlStandIn::windowOpened = [] { noteCall("window"); };
    start({"-win", "-w", "1280", "-h", "720"});
    GlStandIn::windowOpened = [] {};
    const std::string stream = "1x2, 44100"; // device, channels, hertz
    EXPECT_EQ(libraries.calls, (Log{"SDL_Init", "caption Tarnwick Episode", "window",
                                    "joystick events 1", "open joystick 0", "open joystick 1",
                                    "Initialize", "IsFormatSupported null, " + stream,
                                    "OpenStream null, " + stream + ", 0, 0", "StartStream"}));
    EXPECT_STREQ(std::getenv("SDL_VIDEO_X11_WMCLASS"), "tarnwick");

    Inspector::setState(*application, std::make_unique<LastScreen>(*application, log));
    libraries.calls.clear();
    application.reset();
    EXPECT_EQ(libraries.calls, (Log{"StopStream", "CloseStream", "Terminate", "close joystick",
                                    "close joystick", "delete screen", "SDL_Quit"}));
}

// --- events

class MainLoop : public ApplicationFixture {
protected:
    static void pushButton(Uint8 type, Uint8 button, Uint16 x, Uint16 y) {
        push({.button = {type, 0, button, 0, x, y}});
    }
};

TEST_F(MainLoop, MousePositionsAreScaledToUnitsAndTruncated) {
    start({"-win", "-w", "800", "-h", "600", "-ns"});
    // 1278.4, and 233.99999 in the game's floats
    push({.motion = {SDL_MOUSEMOTION, 0, 0, 799, 195, 0, 0}});
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 400, 300);
    pushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_WHEELUP, 1, 599);
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_WHEELUP, 1, 1);
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_WHEELDOWN, 1, 1);
    EXPECT_EQ(recordFrame(), (Log{"moved 1278 233", "down 1 640 360", "up 4 1 718", "wheel 0",
                                  "wheel 1", "draw"}));
}

TEST_F(MainLoop, QuitEndsTheLoopBeforeTheNextFrameButAfterPendingEvents) {
    runFrame();
    push(SDL_QUIT);
    pushKey(SDL_KEYDOWN, SDLK_UP);
    GlStandIn::waits.clear();
    EXPECT_EQ(recordFrame(), Log{"pressed P1Up"});
    EXPECT_TRUE(GlStandIn::waits.empty());
    start(Inspector::quietArguments());
    pushKey(SDL_KEYDOWN, SDLK_ESCAPE);
    EXPECT_FALSE(runFrame());
}

TEST_F(MainLoop, WithoutAScreenEventsAreDroppedAndFramesGoOn) {
    Inspector::setState(*application, nullptr);
    for (Uint8 type = SDL_ACTIVEEVENT; type < SDL_QUIT; ++type) push(type);
    const std::uint32_t shown = GlStandIn::swaps;
    EXPECT_TRUE(runFrame());
    EXPECT_EQ(GlStandIn::swaps, shown + 1);
}

// --- the glyph font

TEST_F(MainLoop, EachCharacterHasItsPictureBeforeTheFirstFrame) {
    struct GlyphHash : OpenGLDrawer {
        GlyphHash(std::uint32_t& target) : OpenGLDrawer(1280, 720), hash(target) {}
        void setGlyphImage(int index, PixelBuffer pixels, std::uint32_t size) override {
            for (std::uint32_t i = 0; i < size * size * 4; ++i) {
                hash = (hash ^ pixels[i]) * 16777619u + static_cast<std::uint32_t>(index);
            }
        }
        std::uint32_t& hash;
    };
    std::uint32_t hash = 0;
    Inspector::setDrawer(*application, std::make_unique<GlyphHash>(hash));
    push(SDL_QUIT);
    application->run();
    EXPECT_EQ(hash, 2692222727u) << "differs if one of the pictures does";
}

// --- the time between frames

class Pacing : public ApplicationFixture {
protected:
    // The wait of a frame that begins `gap` ms after the last one; -1 if it does not wait.
    int waitAfter(std::uint32_t gap) {
        GlStandIn::clock += gap;
        GlStandIn::waits.clear();
        runFrame();
        EXPECT_LE(GlStandIn::waits.size(), 1u);
        return GlStandIn::waits.empty() ? -1 : static_cast<int>(GlStandIn::waits[0]);
    }
};

TEST_F(Pacing, FramesAreFifteenMillisecondsApart) {
    EXPECT_EQ(waitAfter(0), -1) << "the first frame";
    EXPECT_EQ(waitAfter(0), 15);
    EXPECT_EQ(waitAfter(14), 1);
    EXPECT_EQ(waitAfter(15), -1);
    EXPECT_EQ(waitAfter(100000), -1);
    EXPECT_EQ(waitAfter(1), 14) << "the game does not catch up after a slow frame";
    GlStandIn::clock = 0xFFFFFFF8;
    waitAfter(0);
    EXPECT_EQ(waitAfter(10), 5) << "the clock has wrapped";
}

// --- changes of the screen

class StateChange : public ApplicationFixture {
protected:
    // Asks for another screen when it is drawn or a key is pressed.
    class Leaving : public Recorder {
    public:
        using Recorder::Recorder;
        ~Leaving() override { record("deleted, seed", noiseSeed()); }

        void draw(Drawer& drawer) override {
            Recorder::draw(drawer);
            changeState("GamePlay", "");
        }
        void keyPressed(const std::string&, const SDL_keysym*) override {
            changeState("GamePlay", "");
        }
    };

    void SetUp() override {
        ApplicationFixture::SetUp();
        Inspector::setState(*application, std::make_unique<Leaving>(*application, log));
        noiseSeed() = 5000; // building the play changes it
    }

    GamePlay* play() { return dynamic_cast<GamePlay*>(Inspector::state(*application)); }
};

TEST_F(StateChange, OnAnEventTheNewScreenGetsTheOtherEventsAndTheFrame) {
    pushKey(SDL_KEYDOWN, SDLK_LEFT);
    pushKey(SDL_KEYDOWN, SDLK_UP);
    const std::uint64_t calls = GlStandIn::calls;
    EXPECT_EQ(recordFrame(), Log{"deleted, seed 5000"}) << "before the new one is built";
    EXPECT_GT(GlStandIn::calls, calls + 100) << "the play was drawn";
    ASSERT_NE(play(), nullptr);
    EXPECT_FALSE(Inspector::heldKeys(*play()).left);
    EXPECT_TRUE(Inspector::heldKeys(*play()).up);
}

TEST_F(StateChange, InDrawTheFrameEndsAndTheNewScreenDrawsTheNext) {
    const std::uint64_t calls = GlStandIn::calls;
    const std::uint32_t shown = GlStandIn::swaps;
    EXPECT_EQ(recordFrame(), (Log{"draw", "deleted, seed 5000"}));
    EXPECT_EQ(GlStandIn::swaps, shown + 1);
    EXPECT_LT(GlStandIn::calls, calls + 10) << "the play was not drawn yet";
    EXPECT_NE(play(), nullptr);
}
