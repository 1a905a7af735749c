// SPDX-License-Identifier: Zlib
#include "app/Application.h"
#include "game/GamePlay.h"
#include "tools/Inspector.h"

Drawer& Inspector::drawer(Application& application) {
    return *application.drawer;
}

GameState* Inspector::state(Application& application) {
    return application.state.get();
}

void Inspector::setState(Application& application, std::unique_ptr<GameState> state) {
    application.state = std::move(state);
}

Player& Inspector::player(GamePlay& play) {
    return play.player;
}

bool Inspector::isFinished(const GamePlay& play) {
    return play.finished;
}
