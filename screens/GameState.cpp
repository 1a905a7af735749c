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
    // Copies the strings, which may belong to this object. The call deletes it.
    application->changeState(name, second);
}
