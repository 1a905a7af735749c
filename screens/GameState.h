// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include <cstdint>
#include <string>

class Application;
class Drawer;

// One screen of the game. The application owns the current state, draws it once a frame and passes
// all input to it. There is no update apart from draw: one call is one tick. Main thread only.
//
// Actions are names such as "P1Left", empty for input without a binding. `key` is null for a
// joystick button. Mouse positions are in units of the virtual screen.
class GameState {
public:
    explicit GameState(Application& owner) : application(&owner) {}
    GameState(const GameState&) = delete;
    GameState& operator=(const GameState&) = delete;
    virtual ~GameState() = default;

    // Advances the state by one tick and draws it.
    virtual void draw(Drawer& drawer) = 0;

    // Never called; a hook for messages from outside the game.
    virtual void stateHook(std::intptr_t /*first*/, std::intptr_t /*second*/) {}

    virtual void keyPressed(const std::string& /*action*/, const SDL_keysym* /*key*/) {}
    virtual void keyReleased(const std::string& /*action*/, const SDL_keysym* /*key*/) {}
    virtual void mouseDown(std::int32_t /*button*/, std::int32_t /*x*/, std::int32_t /*y*/) {}
    virtual void mouseUp(std::int32_t /*button*/, std::int32_t /*x*/, std::int32_t /*y*/) {}
    virtual void mouseMoved(std::int32_t /*x*/, std::int32_t /*y*/) {}
    virtual void mouseWheel(std::int32_t /*direction*/) {} // 0 up, 1 down

    // The magnitude is from 0 to 1; the direction is a joystick code (app/InputCodes.h).
    virtual void joystickAxis(const std::string& /*action*/, float /*magnitude*/,
                              std::int32_t /*joystick*/, std::int32_t /*direction*/) {}

    virtual std::string getName() const = 0;

protected:
    // Whether the player turned the music off.
    bool isMusicOff() const;

    // Ends the program after this pass of the main loop.
    void quit();

    // Replaces this state at once. The call deletes this object, so nothing may use it afterwards.
    // An unknown name does nothing. The second string is unused.
    void changeState(const std::string& name, const std::string& second);

private:
    Application* application;
};
