// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "app/Application.h"
#include "screens/GameState.h"
#include "tests/support/GlStandIn.h"
#include "tools/Inspector.h"

// The real application without a real window, with a screen that records its input.
class ApplicationFixture : public testing::Test {
protected:
    using Log = std::vector<std::string>;

    class Recorder : public GameState {
    public:
        Recorder(Application& owner, Log& target) : GameState(owner), log(target) {}

        void draw(Drawer&) override { record("draw"); }
        void keyPressed(const std::string& action, const SDL_keysym* key) override {
            record("pressed " + action + (key ? "" : " button"));
            if (action == "Escape") quit();
        }
        void keyReleased(const std::string& action, const SDL_keysym* key) override {
            record("released " + action + (key ? "" : " button"));
        }
        void mouseDown(std::int32_t button, std::int32_t x, std::int32_t y) override {
            record("down", button, x, y);
        }
        void mouseUp(std::int32_t button, std::int32_t x, std::int32_t y) override {
            record("up", button, x, y);
        }
        void mouseMoved(std::int32_t x, std::int32_t y) override { record("moved", x, y); }
        void mouseWheel(std::int32_t direction) override { record("wheel", direction); }
        void joystickAxis(const std::string& action, float magnitude, std::int32_t joystick,
                          std::int32_t direction) override {
            record("axis " + action, magnitude, joystick, direction);
        }
        std::string getName() const override { return "Recorder"; }

    protected:
        template <typename... Numbers>
        void record(const std::string& name, Numbers... numbers) {
            std::ostringstream text;
            text << name;
            ((text << " " << numbers), ...);
            log.push_back(text.str());
        }

        Log& log;
    };

    void SetUp() override { start(Inspector::quietArguments()); }

    void start(const std::vector<std::string>& arguments) {
        application.reset();
        GlStandIn::start();
        testing::internal::CaptureStdout(); // the drawer's report
        application = std::make_unique<Application>(arguments);
        testing::internal::GetCapturedStdout();
        Inspector::setState(*application, std::make_unique<Recorder>(*application, log));
    }

    static void push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 0); }
    static void push(Uint8 type) { push(SDL_Event{.type = type}); }
    static void pushKey(Uint8 type, SDLKey symbol) {
        push({.key = {type, 0, 0, {0, symbol, KMOD_NONE, 0}}});
    }

    // Runs one pass of the main loop and returns what the screen recorded in it.
    Log recordFrame() {
        log.clear();
        runFrame();
        return log;
    }
    bool runFrame() { return Inspector::runFrame(*application); }

    Log log;
    std::unique_ptr<Application> application;
};
