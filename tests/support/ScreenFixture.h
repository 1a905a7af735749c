// SPDX-License-Identifier: Zlib
#pragma once

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

#include "base/Noise.h"
#include "tests/support/ApplicationFixture.h"
#include "tests/support/RecordingDrawer.h"

// The real application with one of the game's screens, which draws on a RecordingDrawer.
class ScreenFixture : public ApplicationFixture {
protected:
    void SetUp() override {
        ApplicationFixture::SetUp();
        noiseSeed() = 1;
    }

    template <typename Screen>
    Screen* enter() {
        auto made = std::make_unique<Screen>(*application);
        Screen* const screen = made.get();
        Inspector::setState(*application, std::move(made));
        return screen;
    }

    // Texture handles outlive the screens, so all tests share one drawer, as in the game. No screen
    // of the game may be drawn on the application's own drawer.
    static RecordingDrawer& drawer() {
        static RecordingDrawer only;
        return only;
    }

    const Log& draw() {
        drawer().calls.clear();
        Inspector::state(*application)->draw(drawer());
        return drawer().calls;
    }
    // The calls with this name.
    static Log named(const std::string& name, const Log& calls) {
        Log found;
        std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                     [&](const std::string& call) { return call.starts_with(name + " "); });
        return found;
    }
    // The names of the calls in order, without repetitions.
    static Log order(const Log& calls) {
        Log names;
        for (const std::string& call : calls) {
            const std::string name = call.substr(0, call.find(' '));
            if (names.empty() || names.back() != name) names.push_back(name);
        }
        return names;
    }
    void press(const std::string& action) {
        Inspector::state(*application)->keyPressed(action, nullptr);
    }
    void release(const std::string& action) {
        Inspector::state(*application)->keyReleased(action, nullptr);
    }
    std::string state() const { return Inspector::state(*application)->getName(); }
};
