// SPDX-License-Identifier: Zlib
#include "app/Application.h"

#include <algorithm>
#include <utility>

#include "app/LaunchOptions.h"
#include "app/Settings.h"
#include "app/WindowSetup.h"
#include "drawing/ImageLoader.h"
#include "drawing/OpenGLDrawer.h"
#include "game/PlayRules.h"
#include "images/EmbeddedImages.h"
#include "platform/Platform.h"
#include "screens/Epilogue.h"
#include "screens/GamePlay.h"
#include "screens/TitleScreen.h"
#include "sound/AudioSingleton.h"

static constexpr std::int16_t virtualWidth = 1280; // units
static constexpr std::int16_t virtualHeight = 720;

// Indices into glyphImages by the drawer's glyph number: A to Z, 0 to 9, then . , + - ! ? :
static constexpr int glyphPlaces[glyphImageCount] = {
    10, 11, 12, 15, 16, 18, 19, 20, 21, 22, 23, 24, 25, 27, 28, 29, 32, 34, 35, 36, 37, 38,
    39, 40, 41, 42, 0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  30, 14, 31, 26, 17, 33, 13};

Application::Application(const std::vector<std::string>& arguments) {
    const Settings settings;
    bindDefaults();
    setWindowEnvironment();
    if (SDL_Init(SDL_INIT_TIMER | SDL_INIT_VIDEO | SDL_INIT_JOYSTICK) < 0) {
        throw FatalError{std::string("Could not initialise SDL: ") + SDL_GetError()};
    }
    setTitleAndIcon();

    const LaunchOptions options(arguments, settings);
    windowWidth = options.width;
    windowHeight = options.height;
    noSound = options.noSound;
    noMusic = options.noMusic;
    openWindow(options.fullscreen, options.antialiasing);
    state = std::make_unique<TitleScreen>(*this);
    openJoysticks();
    openAudio(options.audioApi);
    SDL_ShowCursor(SDL_DISABLE);
}

Application::~Application() {
    // First, so that the audio thread has ended before anything that it uses is deleted.
    if (!noSound) audioDevice.close();
    for (SDL_Joystick* joystick : joysticks) SDL_JoystickClose(joystick);
    drawer.reset();
    state.reset();
    SDL_Quit();
}

void Application::openWindow(bool fullscreen, std::int32_t antialiasing) {
    drawer = std::make_unique<OpenGLDrawer>(virtualWidth, virtualHeight);
    const bool opened =
        drawer->createWindow(static_cast<std::uint16_t>(windowWidth),
                             static_cast<std::uint16_t>(windowHeight), fullscreen, antialiasing);
    // The drawer's own quit event would be lost: enabling joystick events empties the queue.
    if (!opened) quit();
}

void Application::openJoysticks() {
    SDL_JoystickEventState(SDL_ENABLE);
    for (int i = 0; i < SDL_NumJoysticks(); ++i) joysticks.push_back(SDL_JoystickOpen(i));
}

void Application::openAudio(const std::string& audioApi) {
    audioDevice.setCallback(this);
    audioDevice.setChannels(0, 2);
    audioDevice.setSampleRate(44100.0);
    audioDevice.setAudioApi(audioApi);
    if (noSound) return;
    AudioSingleton::instance(); // built here, so that the audio thread only finds it
    audioDevice.open();
}

void Application::fillBuffer(const void* /*input*/, float* output, std::uint32_t frames) {
    std::fill_n(output, std::size_t{frames} * 2, 0.0f);
    AudioSingleton::instance().process(output, static_cast<std::int32_t>(frames));
}

void Application::loadGlyphs() {
    for (int glyph = 0; glyph < glyphImageCount; ++glyph) {
        const EmbeddedImage& file = glyphImages[glyphPlaces[glyph]];
        LoadedImage image = ImageLoader().loadFromMemory(file.data, file.bytes);
        drawer->setGlyphImage(glyph, std::move(image.pixels), image.width);
    }
}

void Application::run() {
    loadGlyphs();
    while (runFrame()) {}
}

bool Application::runFrame() {
    handleEvents();
    if (quitRequested || Platform::isEndRequested()) return false;
    pace();
    drawer->beginFrame();
    if (state) state->draw(*drawer);
    drawer->endFrame();
    return true;
}

void Application::handleEvents() {
    SDL_Event event;
    while (SDL_PollEvent(&event)) handleEvent(event);
}

void Application::handleEvent(const SDL_Event& event) {
    switch (event.type) {
    case SDL_KEYDOWN: onKeyDown(event.key.keysym); break;
    case SDL_KEYUP: onKeyUp(event.key.keysym); break;
    case SDL_MOUSEMOTION: onMouseMotion(event.motion.x, event.motion.y); break;
    case SDL_MOUSEBUTTONDOWN:
        onMouseButtonDown(event.button.button, event.button.x, event.button.y);
        break;
    case SDL_MOUSEBUTTONUP:
        onMouseButtonUp(event.button.button, event.button.x, event.button.y);
        break;
    case SDL_JOYAXISMOTION:
        onJoystickAxis(event.jaxis.which, event.jaxis.axis,
                       static_cast<float>(event.jaxis.value * (1.0 / 32768)));
        break;
    case SDL_JOYBUTTONDOWN: onJoystickButtonDown(event.jbutton.which, event.jbutton.button); break;
    case SDL_JOYBUTTONUP: onJoystickButtonUp(event.jbutton.which, event.jbutton.button); break;
    case SDL_QUIT: quitRequested = true; break;
    default: break;
    }
}

// Waits until 15 ms have passed since the last frame. This frame's time is the end of the wait. If
// it were the time before the wait, waits of 14 and 0 ms would alternate and the game would run at
// twice its speed. The difference is unsigned, so the clock may wrap.
void Application::pace() {
    const std::uint32_t now = SDL_GetTicks();
    const std::uint32_t passed = now - lastFrameTicks;
    const std::uint32_t wait = passed < framePeriod ? framePeriod - passed : 0;
    lastFrameTicks = now + wait;
    if (wait > 0) SDL_Delay(wait);
}

// The old state is deleted first, so that two levels or two bar callbacks never exist at once. The
// field is empty in between, in case building the new one fails.
template <typename State>
void Application::replaceState() {
    state.reset();
    state = std::make_unique<State>(*this);
}

void Application::changeState(std::string name, std::string /*second*/) {
    if (name == "GamePlay") {
        replaceState<GamePlay>();
    } else if (name == "Epilogue") {
        replaceState<Epilogue>();
    } else if (name == "TitleScreen") {
        replaceState<TitleScreen>();
    }
}
