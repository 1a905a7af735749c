// SPDX-License-Identifier: Zlib
// Runs the game hard and long, without a window, mostly for the sanitizers; usage below.
#include <SDL.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "app/Application.h"
#include "screens/GamePlay.h"
#include "sound/AudioSingleton.h"
#include "tests/stress/Faults.h"
#include "tests/support/FakePortAudio.h"
#include "tests/support/GlStandIn.h"
#include "tools/Inspector.h"

static constexpr const char* usage =
    "usage: stress WORK COUNT\n"
    "  bot      frames with random keys, joystick and mouse, and a thread for the sound\n"
    "  plays    plays built and destroyed while that thread is in a bar event\n"
    "  story    runs of the whole story, from start to quit\n"
    "  steps    steps of the runner on random levels, at any speed\n"
    "  faults   runs of the story with a call that fails: each COUNTth, alone and with all after "
    "it\n";

static std::minstd_rand randomSource;
static int pick(int count) {
    return static_cast<int>(randomSource() % static_cast<unsigned>(count));
}

// The audio thread of the real program, without a pause.
class AudioThread {
public:
    explicit AudioThread(Application& application)
        : thread([this, &application] {
              constexpr std::uint32_t frames = 256;
              std::vector<float> buffer(2 * frames);
              while (!quit) application.fillBuffer(nullptr, buffer.data(), frames);
          }) {}
    ~AudioThread() {
        quit = true;
        thread.join();
    }

private:
    std::atomic<bool> quit = false;
    std::thread thread;
};

// The linker redirects PlayMusic::onBar(AudioSingleton&, float) to this.
static std::atomic<bool> delaysBars = false;
extern "C" void __real__ZN9PlayMusic5onBarER14AudioSingletonf(PlayMusic*, AudioSingleton&, float);
extern "C" void __wrap__ZN9PlayMusic5onBarER14AudioSingletonf(PlayMusic* music,
                                                              AudioSingleton& sound, float speed) {
    if (delaysBars) std::this_thread::sleep_for(std::chrono::microseconds(100));
    __real__ZN9PlayMusic5onBarER14AudioSingletonf(music, sound, speed);
}

static void push(SDL_Event event) {
    SDL_PushEvent(&event);
}

static void pushKey(SDLKey key, bool down = true) {
    SDL_Event event = {};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.keysym.sym = key;
    push(event);
}

static void pushAny() {
    static constexpr SDLKey keys[] = {SDLK_UP, SDLK_DOWN,  SDLK_LEFT,   SDLK_RIGHT,  SDLK_RIGHT,
                                      SDLK_z,  SDLK_SPACE, SDLK_RETURN, SDLK_UNKNOWN};
    const auto byte = [] { return static_cast<Uint8>(pick(256)); };
    SDL_Event event = {};
    event.type = byte();
    switch (event.type % 4) {
    case 0: return pushKey(keys[pick(9)], pick(2) == 0);
    case 1:
        event.type = SDL_JOYAXISMOTION;
        event.jaxis = {SDL_JOYAXISMOTION, byte(), byte(), static_cast<Sint16>(pick(65536))};
        break;
    case 2:
        event.motion = {static_cast<Uint8>(SDL_MOUSEMOTION + pick(3)),
                        byte(),
                        byte(),
                        static_cast<Uint16>(pick(65536)),
                        static_cast<Uint16>(pick(65536)),
                        0,
                        0};
        break;
    default:
        event.jbutton = {static_cast<Uint8>(SDL_JOYBUTTONDOWN + pick(2)), byte(), byte(), byte()};
    }
    push(event);
}

// What no random player reaches: the goal, and odd places and speeds.
static void disturb(Application& application, bool reachesGoal) {
    auto* play = dynamic_cast<GamePlay*>(Inspector::state(application));
    if (!play) return;
    Inspector::Motion motion = Inspector::motion(Inspector::player(*play));
    motion.vx = reachesGoal ? 2.0f : static_cast<float>(pick(200) - 100) / 100;
    motion.y = reachesGoal ? motion.y : static_cast<float>(pick(1100) - 50);
    motion.kicking = motion.airborne = reachesGoal;
    Inspector::setMotion(Inspector::player(*play), motion);
}

static bool runFrame(Application& application) {
    GlStandIn::waits.clear();
    return Inspector::runFrame(application);
}

static void bot(long frames) {
    while (frames > 0) {
        Application application(Inspector::quietArguments());
        const AudioThread audio(application);
        for (bool running = true; running && frames > 0; --frames) {
            for (int events = pick(4); events > 0; --events) pushAny();
            if (pick(1000) == 0) disturb(application, pick(4) == 0);
            if (pick(20000) == 0) pushKey(SDLK_ESCAPE);
            running = runFrame(application);
        }
    }
}

static void plays(long count) {
    delaysBars = true;
    Application application(Inspector::quietArguments());
    const AudioThread audio(application);
    for (long i = 0; i < count; ++i) {
        application.changeState("GamePlay", "");
        runFrame(application);
        std::this_thread::sleep_for(std::chrono::microseconds(pick(200)));
    }
}

static void story(long count) {
    for (long i = 0; i < count; ++i) {
        try {
            FakePortAudio::renew().addApi(paALSA, "ALSA", 0, 0);
            Application application({"-win", "-w", "640", "-h", "360", "-aa", "ALSA"});
            for (int frame = 0; frame < 2000; ++frame) {
                if (frame < 10) pushKey(SDLK_SPACE);
                if (frame == 20) disturb(application, true);
                if (frame == 1500) pushKey(SDLK_ESCAPE);
                if (!runFrame(application)) break;
            }
        } catch (const FatalError&) {}
    }
}

static void steps(long count) {
    for (long done = 0; done < count; done += 1000) {
        LoadedImage picture;
        picture.width = static_cast<std::uint32_t>(1 + pick(20));
        picture.height = static_cast<std::uint32_t>(1 + pick(20));
        picture.pixels.reset(new std::uint8_t[picture.width * picture.height * 4]);
        for (std::uint32_t i = 0; i < picture.width * picture.height * 4; ++i) {
            picture.pixels[i] = pick(3) > 0   ? LevelMap::empty
                                : pick(4) > 0 ? 0x20
                                              : LevelMap::flame;
        }
        const LevelMap map(picture);
        Player player({static_cast<float>(pick(20)), static_cast<float>(pick(20))});
        for (int step = 0; step < 1000; ++step) {
            if (pick(50) == 0) {
                static constexpr float speeds[] = {0, 0.5f, -0.5f, 1000, -1000, 1e30f, -1e30f};
                Inspector::Motion motion = Inspector::motion(player);
                motion.vx = speeds[pick(7)];
                motion.vy = speeds[pick(5)]; // beyond 2^24 a landing would take forever
                motion.kicking = pick(2) == 0;
                if (pick(9) == 0) motion.x = motion.y = motion.vx * motion.vx * motion.vx;
                Inspector::setMotion(player, motion);
            }
            if (pick(3) == 0) player.requestKick();
            const int keys = pick(16);
            player.update({(keys & 1) != 0, (keys & 2) != 0, (keys & 4) != 0, (keys & 8) != 0},
                          map);
        }
    }
}

// Each run is a process of its own. Returns how many failed.
static int faults(long stride) {
    auto* calls = static_cast<int*>(
        mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    std::string folder = "/tmp/stress.XXXXXX"; // for the settings
    if (!mkdtemp(folder.data())) return 1;
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    int failures = 0;
    const auto run = [&](int failing, bool onward) {
        std::filesystem::remove_all(folder);
        const pid_t child = fork();
        if (child == 0) {
            alarm(60);
            Faults::calls = 0;
            Faults::failing = failing;
            Faults::onward = onward;
            story(1);
            *calls = Faults::calls;
            Faults::failing = 0;
            std::exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        if (status == 0) return;
        ++failures;
        std::cerr << "call " << failing << (onward ? " and all after it" : "") << ": status "
                  << status << std::endl;
    };
    run(0, false);
    const int count = *calls;
    for (long failing = 1; failing <= count; failing += stride) {
        run(static_cast<int>(failing), false);
        run(static_cast<int>(failing), true);
    }
    std::filesystem::remove_all(folder);
    std::cerr << count << " calls can fail" << std::endl;
    return failures;
}

int main(int count, char* arguments[]) {
    const std::string work = count == 3 ? arguments[1] : "";
    const long amount = count == 3 ? std::atol(arguments[2]) : 0;
    GlStandIn::start();
    GlStandIn::fails = Faults::isNext;
    std::cout.setstate(std::ios::failbit); // the drawer's report
    if (work == "bot") {
        bot(amount);
    } else if (work == "plays") {
        plays(amount);
    } else if (work == "story") {
        story(amount);
    } else if (work == "steps") {
        steps(amount);
    } else if (work == "faults") {
        return faults(amount) == 0 ? 0 : 1;
    } else {
        std::cerr << usage;
        return 2;
    }
    return 0;
}
