// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include <cstdint>
#include <deque>
#include <fstream>
#include <memory>
#include <set>
#include <string>

#include "tools/WavFile.h"
#include "tools/replay/InputScript.h"

class Application;

// Runs the real application on an input script. The linker redirects four calls of SDL to this
// class: polling returns the script's events, the clock advances only by the waits, which take no
// time, and swapping the buffers records the frame. So a replay runs as fast as it draws and is the
// same every time.
class Replay {
public:
    struct Options {
        std::string script;
        std::string trace;                      // file to write, empty for none
        std::string pictures;                   // folder for the pictures
        std::uint32_t every = 0;                // a picture of every Nth frame, 0 for none
        std::set<std::uint32_t> frames;         // pictures of these frames
        std::string sound;                      // WAV file to write, empty for none
        std::string pitches;                    // pitch file, empty for the game's choice
        std::uint32_t seed = 1;                 // of the random numbers
        std::vector<std::string> gameArguments; // empty: a window of 1280 by 720
    };

    explicit Replay(const Options& options);

    // Plays the script to its end. Throws std::runtime_error if it cannot.
    void play();

    // Replacements for calls of SDL.
    int pollEvent(SDL_Event* event);
    Uint32 ticks() const { return clock; }
    void delay(Uint32 milliseconds) { clock += milliseconds; }
    void swapBuffers();

    // The replay that is playing.
    static Replay& current();

private:
    void open();
    void run();
    void renderSound();
    void queueFrame();
    void writeTrace();
    void writePictureOfFrame();

    Options options;
    InputScript script;
    std::ofstream trace;
    std::unique_ptr<WavFile> sound;
    Application* application = nullptr;
    Uint32 clock = 1000; // ms
    std::uint32_t frame = 0;
    bool queued = false; // this frame's events are in `events`
    bool reachedEnd = false;
    std::deque<SDL_Event> events;
    std::string failure; // of the run or the writing, empty for none
};
