// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "tools/replay/RunCheck.h"

class Application;
class GamePlay;
class Ghosts;

// Runs the real application under control. The linker redirects its calls of SDL for events, the
// clock, waits and the end of a frame to this class, and its question for the folder of the game's
// data. Derived classes give the input and get the frames. One at a time; main thread.
class GameRun {
public:
    struct Options {
        std::string level;                      // its picture, empty for the game's own
        std::string pitches;                    // tune file, empty for the game's choice
        std::uint32_t seed = 1;                 // of the random numbers
        std::vector<std::string> gameArguments; // as the game gets them
    };

    explicit GameRun(Options options);
    GameRun(const GameRun&) = delete;
    GameRun& operator=(const GameRun&) = delete;
    virtual ~GameRun() = default;

    // Replacements for calls of SDL.
    int pollEvent(SDL_Event* event);
    virtual Uint32 ticks();                  // the real clock, unless overridden
    virtual void delay(Uint32 milliseconds); // a real wait, unless overridden
    void swapBuffers();

    static GameRun& current();

    // Draws these over the play until its goal. They must outlive the run.
    void setGhosts(Ghosts& shown) { ghosts = &shown; }

    // Of the frames up to now.
    const RunResult& getResult() const { return result; }

    // The folder that holds the game's levels, fonts, patches and tunes.
    static std::string dataFolder();
    static void setDataFolder(const std::string& folder);

protected:
    // Runs the game until it ends. Throws std::runtime_error if it does not start.
    void run();

    // Called for each event of the window.
    virtual void takeWindowEvent(const SDL_Event& event) = 0;
    // Called once before each frame: adds what the game shall see to `events`.
    virtual void addEvents() = 0;
    // Called when a frame was drawn, before it is shown. Says whether it is shown.
    virtual bool finishFrame() = 0;

    void addKey(int key, bool pressed); // of InputScript
    void addQuit();

    GamePlay* findPlay() const; // null on other screens

    Options options;
    Application* application = nullptr;
    std::uint32_t frame = 0;
    std::deque<SDL_Event> events; // for the game, before this frame

private:
    void replaceLevel();

    void countFrame(GamePlay& play);

    Ghosts* ghosts = nullptr;
    RunResult result;
    bool queued = false; // this frame's events are in `events`
    bool replacedLevel = false;
};
