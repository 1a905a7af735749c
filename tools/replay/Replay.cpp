// SPDX-License-Identifier: Zlib
#include "tools/replay/Replay.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "app/Application.h"
#include "base/FilePath.h"
#include "base/Noise.h"
#include "game/PlayRules.h"
#include "platform/Platform.h"
#include "screens/GamePlay.h"
#include "sound/AudioSingleton.h"
#include "tools/Inspector.h"
#include "tools/replay/PictureFile.h"

static constexpr SDLKey keySymbols[InputScript::keyCount] = {SDLK_UP,   SDLK_LEFT,  SDLK_RIGHT,
                                                             SDLK_DOWN, SDLK_SPACE, SDLK_ESCAPE};

// Samples of sound in even and odd frames: 661 and 662, since 15 ms are 661.5.
static constexpr std::int32_t evenSamples = framePeriod * 44100 / 1000;
static constexpr std::int32_t oddSamples = framePeriod * 2 * 44100 / 1000 - evenSamples;

static Replay* playing = nullptr;

static std::filesystem::path makeSettingsFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "tarnwick-replay-XXXXXX").string();
    const char* made = mkdtemp(name.data());
    return made ? made : "/nonexistent";
}

Replay& Replay::current() {
    return *playing;
}

Replay::Replay(const Options& chosen) : options(chosen) {}

void Replay::play() {
    open();
    const std::filesystem::path settings = makeSettingsFolder();
    Platform::setEnvironment("XDG_CONFIG_HOME", settings);
    run();
    std::error_code problem;
    std::filesystem::remove_all(settings, problem);
    trace.close();
    if (!options.trace.empty() && !trace) failure = "cannot write " + options.trace;
    if (sound && !sound->close()) failure = sound->getFailure();
    if (!reachedEnd && failure.empty()) failure = "the program ended before the script";
    if (!failure.empty()) throw std::runtime_error(failure);
}

void Replay::run() {
    playing = this;
    noiseSeed() = options.seed;
    std::vector<std::string> arguments = options.gameArguments;
    if (arguments.empty()) arguments = Inspector::quietArguments();
    arguments.push_back("-ns");
    try {
        Application real(arguments);
        application = &real;
        real.run();
    } catch (const FatalError& error) {
        failure = error.text;
    }
}

void Replay::open() {
    std::ifstream source(options.script);
    if (!source) throw std::runtime_error("cannot read " + options.script);
    if (!script.read(source, failure)) throw std::runtime_error(options.script + ", " + failure);
    if (!options.pictures.empty()) {
        std::error_code problem;
        std::filesystem::create_directories(options.pictures, problem);
        if (problem) {
            throw std::runtime_error("cannot make " + options.pictures + ": " + problem.message());
        }
    }
    if (!options.pitches.empty() && !FilePath(options.pitches).isFile()) {
        throw std::runtime_error("cannot read " + options.pitches);
    }
    if (!options.sound.empty()) {
        sound = std::make_unique<WavFile>(options.sound, WavFile::Samples::int16);
        if (!sound->isGood()) {
            throw std::runtime_error("cannot write " + options.sound + ": " + sound->getFailure());
        }
    }
    if (options.trace.empty()) return;
    trace.open(options.trace);
    trace << "# frame state x y vx vy flags: A airborne, K kicking, R or L facing, F finished\n";
    if (!trace) throw std::runtime_error("cannot write " + options.trace);
}

extern "C" int __real_SDL_PollEvent(SDL_Event* event);

int Replay::pollEvent(SDL_Event* event) {
    // The window's own events are read and dropped, except for a request to quit.
    SDL_Event real;
    while (__real_SDL_PollEvent(&real)) {
        if (real.type == SDL_QUIT) events.push_back(real);
    }
    if (!queued) queueFrame();
    if (events.empty()) {
        queued = false; // the next poll belongs to the next frame
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
    renderSound();
    ++frame;
}

// The sound is always rendered, since the music uses random numbers.
void Replay::renderSound() {
    if (frame == 0 && !options.pitches.empty()) {
        AudioSingleton::instance().setPitches(readPitches(options.pitches));
    }
    const std::int32_t samples = frame % 2 == 0 ? evenSamples : oddSamples;
    std::vector<float> buffer(static_cast<std::size_t>(samples) * 2);
    application->fillBuffer(nullptr, buffer.data(), static_cast<std::uint32_t>(samples));
    if (sound) sound->append(buffer.data(), samples);
}

static void append(std::string& line, float number) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr; // exactly
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
    if (!writePicture(path, window->w, window->h)) failure = "cannot write " + path;
}
