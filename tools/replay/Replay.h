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

// Runs the real application on an input script instead of a person. The linker leads four calls of
// the program here in place of SDL: the poll of events gives the script's, the clock is one that
// stands still but for the waits, which take no time, and the swap of the buffers is the moment at
// which a frame is written down. So a replay goes as fast as it is drawn and is the same every
// time.
class Replay {
public:
    struct Options {
        std::string script;
        std::string trace;                      // file to write, empty for none
        std::string pictures;                   // folder for the pictures
        std::uint32_t every = 0;                // a picture of every so many frames, 0 for none
        std::set<std::uint32_t> frames;         // pictures of these frames
        std::string sound;                      // WAV file to write, empty for none
        std::string pitches;                    // pitch file, empty for one that the game picks
        std::uint32_t seed = 1;                 // of the noise
        std::vector<std::string> gameArguments; // empty: a window of 1280 by 720
    };

    explicit Replay(const Options& options);

    // Plays the script to its end. False, with a text, if it could not.
    bool play(std::string& failure);

    // What the program gets in place of SDL.
    int pollEvent(SDL_Event* event);
    Uint32 ticks() const { return clock; }
    void delay(Uint32 milliseconds) { clock += milliseconds; }
    void swapBuffers();

    // The one that is playing.
    static Replay& current();

private:
    bool open(std::string& failure);
    bool run(std::string& failure);
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
    bool queued = false; // the events of this frame
    bool reachedEnd = false;
    std::deque<SDL_Event> events;
    std::string writeFailure;
};
