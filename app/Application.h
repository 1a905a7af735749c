// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/FatalError.h"
#include "sound/PortAudioCallback.h"
#include "sound/PortAudioDevice.h"

class Drawer;
class GameState;

// The root of the program. It lives on main's stack, opens everything, runs the main loop and
// closes everything. It owns the drawer, the current state and the audio stream, turns SDL's events
// into calls on the state, and keeps frames at least 15 ms apart. Main thread, except for
// fillBuffer.
class Application : public PortAudioCallback {
public:
    // Does all of start-up. The arguments are the command line without the program's name. Throws
    // FatalError if SDL cannot be initialised, and after printing the help for --help.
    explicit Application(const std::vector<std::string>& arguments);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application() override;

    // Loads the glyph images and runs the main loop. Returns after quit was called.
    void run();

    void quit() { quitRequested = true; }

    // Deletes the current state and builds the one with this name; an unknown name does nothing.
    // The state itself calls this, through GameState::changeState. The strings are passed by value,
    // since they may belong to the state. The second one is unused.
    void changeState(std::string name, std::string second);

    // Whether the player turned the music off.
    bool isMusicOff() const { return noMusic; }

    // Renders all sound: `frames` interleaved stereo frames. Audio thread.
    void fillBuffer(const void* input, float* output, std::uint32_t frames) override;

private:
    friend class Inspector;

    // Start-up and frames (Application.cpp)
    void openWindow(bool fullscreen, std::int32_t antialiasing);
    void openJoysticks();
    void openAudio(const std::string& audioApi);
    void loadGlyphs();
    bool runFrame(); // one pass of the main loop; false, without a frame, once quit was called
    void handleEvents();
    void handleEvent(const SDL_Event& event);
    void pace();

    template <typename State>
    void replaceState();

    // Input (ApplicationInput.cpp). Actions are looked up by input code; without a binding they are
    // empty.
    void bindDefaults();
    void bind(const std::string& action, std::int32_t inputCode);
    std::string actionForKey(const SDL_keysym* key);
    std::string actionForJoystick(std::int32_t joystick, std::int32_t joystickCode);
    void onKeyDown(const SDL_keysym& key);
    void onKeyUp(const SDL_keysym& key);
    void onJoystickAxis(std::int32_t joystick, std::int32_t axis, float value);
    void onJoystickButtonDown(std::int32_t joystick, std::int32_t button);
    void onJoystickButtonUp(std::int32_t joystick, std::int32_t button);
    void onMouseMotion(std::int32_t x, std::int32_t y);
    void onMouseButtonDown(std::int32_t button, std::int32_t x, std::int32_t y);
    void onMouseButtonUp(std::int32_t button, std::int32_t x, std::int32_t y);
    void reportAxis(std::int32_t joystick, std::int32_t direction, float magnitude);
    std::int32_t virtualX(std::int32_t x) const;
    std::int32_t virtualY(std::int32_t y) const;

    PortAudioDevice audioDevice;
    bool quitRequested = false;
    std::uint32_t lastFrameTicks = 0; // ms, when the last frame was allowed to begin
    std::int32_t windowWidth = 0;     // pixels, as requested
    std::int32_t windowHeight = 0;    // pixels, as requested
    bool noSound = false;
    bool noMusic = false;
    std::map<std::int32_t, std::string> bindings; // action by input code
    std::vector<SDL_Joystick*> joysticks;         // in SDL's order; may contain null
    std::unique_ptr<Drawer> drawer;
    std::unique_ptr<GameState> state;
};
