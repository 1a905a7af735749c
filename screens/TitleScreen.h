// SPDX-License-Identifier: Zlib
#pragma once

#include <array>

#include "screens/GameState.h"

// The opening screen: a darkened sky and a short story. Its pages turn by themselves, or at any
// key, each with a thump. On the last page a key starts the play.
class TitleScreen : public GameState {
public:
    explicit TitleScreen(Application& owner) : GameState(owner) {}

    void draw(Drawer& drawer) override;
    void keyPressed(const std::string& action, const SDL_keysym* key) override;
    std::string getName() const override { return "TitleScreen"; }

private:
    void turnPage();

    static constexpr std::array<const char*, 6> lines = {
        "",
        "Trapped in a world which was never meant to be",
        "Where nobody even remembers your name",
        "You have only one hope to put right what once went wrong...",
        "",
        "Now go! Run! Tarnwick to the past!"};

    int page = 0;        // 0 to 6
    int pageFrames = 30; // frames left on this page
};
