// SPDX-License-Identifier: Zlib
#include "app/GameState.h"

#include "app/Application.h"

void GameState::quit() {
    application->quit();
}

void GameState::changeState(const std::string& name, const std::string& second) {
    // Copies: the texts given may live in this object, which is about to go.
    application->changeState(std::string(name), std::string(second));
}
