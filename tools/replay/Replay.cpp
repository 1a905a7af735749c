// SPDX-License-Identifier: Zlib
#include "tools/replay/Replay.h"

#include <charconv>
#include <cstdio>
#include <filesystem>

#include "app/Application.h"
#include "game/GamePlay.h"
#include "game/Noise.h"
#include "tools/Inspector.h"
#include "tools/replay/PictureFile.h"

static constexpr SDLKey keySymbols[InputScript::keyCount] = {SDLK_UP,   SDLK_LEFT,  SDLK_RIGHT,
                                                             SDLK_DOWN, SDLK_SPACE, SDLK_ESCAPE};

static Replay* playing = nullptr;

Replay& Replay::current() {
    return *playing;
}

Replay::Replay(const Options& chosen) : options(chosen) {}

bool Replay::play(std::string& failure) {
    if (!open(failure)) return false;
    playing = this;
    noiseSeed() = options.seed;
    try {
        Application real(options.gameArguments);
        application = &real;
        real.run();
    } catch (const FatalError& error) {
        failure = error.text;
        return false;
    }
    trace.close();
    if (options.trace.size() && !trace) writeFailure = "cannot write " + options.trace;
    failure = reachedEnd ? writeFailure : "the program ended before the script";
    return failure.empty();
}

bool Replay::open(std::string& failure) {
    std::ifstream source(options.script);
    if (!source) {
        failure = "cannot read " + options.script;
        return false;
    }
    if (!script.read(source, failure)) {
        failure = options.script + ", " + failure;
        return false;
    }
    if (!options.pictures.empty()) {
        std::error_code problem;
        std::filesystem::create_directories(options.pictures, problem);
        if (problem) {
            failure = "cannot make " + options.pictures + ": " + problem.message();
            return false;
        }
    }
    if (options.trace.empty()) return true;
    trace.open(options.trace);
    trace << "# frame state x y vx vy flags: A airborne, K kicking, R or L facing, F finished\n";
    if (!trace) failure = "cannot write " + options.trace;
    return failure.empty();
}

extern "C" int __real_SDL_PollEvent(SDL_Event* event);

int Replay::pollEvent(SDL_Event* event) {
    // The window's own events are kept flowing and dropped, but for a request to quit.
    SDL_Event real;
    while (__real_SDL_PollEvent(&real)) {
        if (real.type == SDL_QUIT) events.push_back(real);
    }
    if (!queued) queueFrame();
    if (events.empty()) {
        queued = false; // the next poll is the next frame's
        return 0;
    }
    *event = events.front();
    events.pop_front();
    return 1;
}

void Replay::queueFrame() {
    queued = true;
    for (const InputScript::Press& press : script.pressesBefore(frame)) {
        SDL_Event event = {};
        event.type = press.pressed ? SDL_KEYDOWN : SDL_KEYUP;
        event.key.keysym.sym = keySymbols[press.key];
        events.push_back(event);
    }
    if (frame < script.getEnd()) return;
    reachedEnd = true;
    SDL_Event quit = {};
    quit.type = SDL_QUIT;
    events.push_back(quit);
}

void Replay::swapBuffers() {
    if (trace.is_open()) writeTrace();
    const bool regular = options.every > 0 && frame % options.every == 0;
    if (!options.pictures.empty() && (regular || options.frames.count(frame))) {
        writePictureOfFrame();
    }
    ++frame;
}

static void append(std::string& line, float number) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr; // exact
    line.append(" ").append(digits, end);
}

void Replay::writeTrace() {
    GameState* state = Inspector::state(*application);
    std::string line = std::to_string(frame) + " " + (state ? state->getName() : "-");
    if (auto* play = dynamic_cast<GamePlay*>(state)) {
        const Inspector::Motion motion = Inspector::motion(Inspector::player(*play));
        append(line, motion.x);
        append(line, motion.y);
        append(line, motion.vx);
        append(line, motion.vy);
        line += " ";
        line += motion.airborne ? 'A' : '-';
        line += motion.kicking ? 'K' : '-';
        line += motion.facingRight ? 'R' : 'L';
        line += Inspector::isFinished(*play) ? 'F' : '-';
    }
    trace << line << "\n";
}

void Replay::writePictureOfFrame() {
    char name[32];
    std::snprintf(name, sizeof name, "%06u.png", frame);
    const std::string path = options.pictures + "/" + name;
    const SDL_Surface* window = SDL_GetVideoSurface();
    if (!writePicture(path, window->w, window->h)) writeFailure = "cannot write " + path;
}
