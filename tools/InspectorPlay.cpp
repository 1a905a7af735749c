// SPDX-License-Identifier: Zlib
#include <new>

#include "app/Application.h"
#include "drawing/Drawer.h"
#include "screens/GamePlay.h"
#include "tools/Inspector.h"

Drawer& Inspector::drawer(Application& application) {
    return *application.drawer;
}

void Inspector::setDrawer(Application& application, std::unique_ptr<Drawer> drawer) {
    application.drawer = std::move(drawer);
}

std::vector<std::string> Inspector::quietArguments() {
    return {"-win", "-w", "1280", "-h", "720", "-ns"};
}

GameState* Inspector::state(Application& application) {
    return application.state.get();
}

void Inspector::setState(Application& application, std::unique_ptr<GameState> state) {
    application.state = std::move(state);
}

bool Inspector::runFrame(Application& application) {
    return application.runFrame();
}

void Inspector::bind(Application& application, const std::string& action, std::int32_t inputCode) {
    application.bind(action, inputCode);
}

Player& Inspector::player(GamePlay& play) {
    return play.player;
}

bool Inspector::isFinished(const GamePlay& play) {
    return play.finished;
}

const HeldKeys& Inspector::heldKeys(const GamePlay& play) {
    return play.heldKeys;
}

void Inspector::setLevel(GamePlay& play, const std::function<LevelMap()>& make) {
    // A level can be neither copied nor moved, so the new one is constructed in place.
    play.map.~LevelMap();
    new (&play.map) LevelMap(make());
}
