// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "app/Application.h"
#include "screens/GameState.h"
#include "tests/support/GlStandIn.h"
#include "tools/Inspector.h"

// The real application on a window that is none, with a screen that writes down what it hears.
class ApplicationFixture : public testing::Test {
protected:
    using Log = std::vector<std::string>;

    class Recorder : public GameState {
    public:
        Recorder(Application& owner, Log& heard) : GameState(owner), log(heard) {}

        void draw(Drawer&) override { log.push_back("draw"); }
        void keyPressed(const std::string& action, const SDL_keysym* key) override {
            write("pressed " + action + (key ? "" : " button"));
            if (action == "Escape") quit();
        }
        void keyReleased(const std::string& action, const SDL_keysym* key) override {
            write("released " + action + (key ? "" : " button"));
        }
        void mouseDown(std::int32_t button, std::int32_t x, std::int32_t y) override {
            write("down", {button, x, y});
        }
        void mouseUp(std::int32_t button, std::int32_t x, std::int32_t y) override {
            write("up", {button, x, y});
        }
        void mouseMoved(std::int32_t x, std::int32_t y) override { write("moved", {x, y}); }
        void mouseWheel(std::int32_t direction) override { write("wheel", {direction}); }
        void joystickAxis(const std::string& action, float magnitude, std::int32_t joystick,
                          std::int32_t direction) override {
            write("axis " + action + " " + std::to_string(magnitude), {joystick, direction});
        }
        std::string getName() const override { return "Recorder"; }

    protected:
        void write(std::string text, std::initializer_list<std::int32_t> numbers = {}) {
            for (const std::int32_t number : numbers)
                text.append(" ").append(std::to_string(number));
            log.push_back(text);
        }

        Log& log;
    };

    void SetUp() override {
        application.reset(); // tests may set up anew
        GlStandIn::start();
        makeApplication(Inspector::quietArguments());
        Inspector::setState(*application, std::make_unique<Recorder>(*application, log));
    }

    void makeApplication(const std::vector<std::string>& arguments) {
        testing::internal::CaptureStdout(); // the drawer's report
        application = std::make_unique<Application>(arguments);
        testing::internal::GetCapturedStdout();
    }

    static void push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 0); }
    static void push(Uint8 type) { push(SDL_Event{.type = type}); }
    static void pushKey(Uint8 type, SDLKey symbol) {
        push({.key = {type, 0, 0, {0, symbol, KMOD_NONE, 0}}});
    }
    static void pushQuit() { push(SDL_QUIT); }

    // One pass of the main loop, and what the screen heard in it.
    Log heardInFrame() {
        log.clear();
        runFrame();
        return log;
    }
    bool runFrame() { return Inspector::runFrame(*application); }

    Log log;
    std::unique_ptr<Application> application;
};
