// SPDX-License-Identifier: Zlib
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/Noise.h"
#include "tests/support/ApplicationFixture.h"
#include "tests/support/RecordingDrawer.h"

// The real application with a screen of the game, which paints on a drawer that writes down.
class ScreenFixture : public ApplicationFixture {
protected:
    using Call = RecordingDrawer::Call;
    using Calls = std::vector<Call>;

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

    // Handles of textures outlive the screens, so all tests share one drawer, as in the game, and
    // no screen of the game is drawn on the application's own.
    static RecordingDrawer& drawer() {
        static RecordingDrawer only;
        return only;
    }

    const Calls& draw() {
        drawer().calls.clear();
        Inspector::state(*application)->draw(drawer());
        return drawer().calls;
    }
    void press(const std::string& action) {
        Inspector::state(*application)->keyPressed(action, nullptr);
    }
    void release(const std::string& action) {
        Inspector::state(*application)->keyReleased(action, nullptr);
    }
    std::string state() const { return Inspector::state(*application)->getName(); }
};
