// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include <cstdint>
#include <string>

class Application;
class Drawer;

// One screen of the game. The application owns the one current state, draws it once a frame and
// hands it all input. There is no other step than draw: one call is one tick. Main thread only.
//
// Actions are names such as "P1Left", empty for input without a binding; `key` is null for a
// joystick's button. Mouse positions are in units of the virtual screen.
class GameState {
public:
    explicit GameState(Application& owner) : application(&owner) {}
    GameState(const GameState&) = delete;
    GameState& operator=(const GameState&) = delete;
    virtual ~GameState() = default;

    // Advances the state by one tick and paints it.
    virtual void draw(Drawer& drawer) = 0;

    // Called by nobody; for states that want to hear from outside the game.
    virtual void stateHook(std::intptr_t /*first*/, std::intptr_t /*second*/) {}

    virtual void keyPressed(const std::string& /*action*/, const SDL_keysym* /*key*/) {}
    virtual void keyReleased(const std::string& /*action*/, const SDL_keysym* /*key*/) {}
    virtual void mouseDown(std::int32_t /*button*/, std::int32_t /*x*/, std::int32_t /*y*/) {}
    virtual void mouseUp(std::int32_t /*button*/, std::int32_t /*x*/, std::int32_t /*y*/) {}
    virtual void mouseMoved(std::int32_t /*x*/, std::int32_t /*y*/) {}
    virtual void mouseWheel(std::int32_t /*direction*/) {} // 0 up, 1 down

    // The magnitude is from 0 to 1, the direction one of the input map's direction codes.
    virtual void joystickAxis(const std::string& /*action*/, float /*magnitude*/,
                              std::int32_t /*joystick*/, std::int32_t /*direction*/) {}

    virtual std::string getName() const = 0;

protected:
    // Whether the player wants the play without its music.
    bool isMusicOff() const;

    // Ends the program after this pass of the main loop.
    void quit();

    // Replaces this state at once: this object is gone when the call returns, so it must be the
    // last thing that is done with it. An unknown name does nothing. The second text is unused.
    void changeState(const std::string& name, const std::string& second);

private:
    Application* application;
};
