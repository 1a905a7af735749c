// SPDX-License-Identifier: Zlib
#include "screens/GameState.h"

#include "app/Application.h"

bool GameState::isMusicOff() const {
    return application->isMusicOff();
}

void GameState::quit() {
    application->quit();
}

void GameState::changeState(const std::string& name, const std::string& second) {
    // Passed by value: the texts given may live in this object, which is about to be deleted.
    application->changeState(name, second);
}
