// SPDX-License-Identifier: Zlib
#include "tools/replay/GameRun.h"

#include <stdexcept>

#include "app/Application.h"
#include "base/FilePath.h"
#include "base/Noise.h"
#include "screens/GamePlay.h"
#include "sound/AudioSingleton.h"
#include "tools/Inspector.h"
#include "tools/replay/Ghosts.h"
#include "tools/replay/InputScript.h"

static constexpr SDLKey keySymbols[InputScript::keyCount] = {SDLK_UP,   SDLK_LEFT,  SDLK_RIGHT,
                                                             SDLK_DOWN, SDLK_SPACE, SDLK_ESCAPE};

static GameRun* running = nullptr;
static std::string chosenDataFolder; // empty for the game's own

extern "C" {
int __real_SDL_PollEvent(SDL_Event* event);
Uint32 __real_SDL_GetTicks();
void __real_SDL_Delay(Uint32 milliseconds);
void __real_SDL_GL_SwapBuffers();
}

GameRun& GameRun::current() {
    return *running;
}

std::string GameRun::dataFolder() {
    return FilePath::getDataDirectory().text();
}

void GameRun::setDataFolder(const std::string& folder) {
    chosenDataFolder = folder;
}

GameRun::GameRun(Options chosen) : options(std::move(chosen)) {}

void GameRun::run() {
    running = this;
    noiseSeed() = options.seed;
    if (!options.pitches.empty()) { // before the audio thread runs
        AudioSingleton::instance().setPitches(readPitches(options.pitches));
    }
    try {
        Application real(options.gameArguments);
        application = &real;
        real.run();
    } catch (const FatalError& error) {
        throw std::runtime_error(error.text);
    }
    if (frame == 0) {
        throw std::runtime_error("the game could not open a window; is there a display?");
    }
}

int GameRun::pollEvent(SDL_Event* event) {
    SDL_Event real;
    while (__real_SDL_PollEvent(&real)) takeWindowEvent(real);
    if (!queued) addEvents();
    queued = true;
    if (events.empty()) {
        queued = false; // the next poll belongs to the next frame
        replaceLevel();
        return 0;
    }
    *event = events.front();
    events.pop_front();
    return 1;
}

void GameRun::addKey(int key, bool pressed) {
    SDL_Event event = {};
    event.type = pressed ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.keysym.sym = keySymbols[key];
    events.push_back(event);
}

void GameRun::addQuit() {
    SDL_Event quit = {};
    quit.type = SDL_QUIT;
    events.push_back(quit);
}

GamePlay* GameRun::findPlay() const {
    return dynamic_cast<GamePlay*>(Inspector::state(*application));
}

// When the play has loaded its own level and not yet drawn it.
void GameRun::replaceLevel() {
    if (options.level.empty() || replacedLevel) return;
    GamePlay* play = findPlay();
    if (!play) return;
    Inspector::setLevel(*play, [this] { return LevelMap(FilePath(options.level)); });
    replacedLevel = true;
}

Uint32 GameRun::ticks() {
    return __real_SDL_GetTicks();
}

void GameRun::delay(Uint32 milliseconds) {
    __real_SDL_Delay(milliseconds);
}

void GameRun::swapBuffers() {
    GamePlay* const play = findPlay();
    if (play && !result.goal) countFrame(*play);
    if (finishFrame()) __real_SDL_GL_SwapBuffers();
    ++frame;
}

void GameRun::countFrame(GamePlay& play) {
    ++result.frames;
    result.goal = Inspector::isFinished(play);
    if (ghosts && !result.goal) {
        ghosts->draw(Inspector::drawer(*application), Inspector::player(play));
    }
}

// Redirected by the linker. The names are those of FilePath::getDataDirectory.
FilePath realDataDirectory() __asm__("__real__ZN8FilePath16getDataDirectoryEv");
FilePath redirectedDataDirectory() __asm__("__wrap__ZN8FilePath16getDataDirectoryEv");

FilePath redirectedDataDirectory() {
    return chosenDataFolder.empty() ? realDataDirectory() : FilePath(chosenDataFolder);
}
