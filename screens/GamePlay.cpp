// SPDX-License-Identifier: Zlib
#include "screens/GamePlay.h"

#include "base/FilePath.h"
#include "drawing/Drawer.h"
#include "game/Backdrop.h"
#include "game/PlayRules.h"

static constexpr float fontSize = 64; // pixels

// The speed display, in units.
static constexpr float barX = 648;
static constexpr float barY = 40;
static constexpr float barHeight = 48;
static constexpr float barUnits = 300; // for a speed of 1
static constexpr float markWidth = 8;

static std::int32_t displayFont = -1; // made by the first drawing of the process

static FilePath levelFile() {
    return FilePath::getDataDirectory().join("levels").join("episode1.png");
}

GamePlay::GamePlay(Application& owner)
    : GameState(owner), map(levelFile()), player(playStart), vortex(false) {
    if (isMusicOff()) return;
    AudioSingleton& sound = AudioSingleton::instance();
    music.start(sound);
    sound.setCallback(this); // last: bar events may come from here on
}

GamePlay::~GamePlay() {
    AudioSingleton& sound = AudioSingleton::instance();
    // The callback goes first: this waits for a running bar event, which would write notes into the
    // cleared grid.
    sound.setCallback(nullptr);
    sound.clearSteps();
}

void GamePlay::onBar() {
    music.onBar(AudioSingleton::instance(), player.speed());
}

void GamePlay::draw(Drawer& drawer) {
    if (displayFont < 0) displayFont = drawer.createFont("MarsNeedsCunnilingus.ttf", fontSize);
    if (!finished) step();
    drawWorld(drawer);
    drawSpeed(drawer);
    if (!finished) return;
    vortex.draw(drawer);
    if (vortex.getSize() >= 1) changeState("Epilogue", ""); // deletes this object
}

void GamePlay::step() {
    player.update(heldKeys, map);
    if (player.isAirborne()) trail.spawn(player.position());
    if (player.kickSpeed() >= goalSpeed) {
        finished = true;
        player.startWarp();
    }
}

void GamePlay::drawWorld(Drawer& drawer) {
    const WorldPoint camera = cameraFor(player.position());
    drawBackdrop(drawer, Backdrop::dawn);
    clouds.draw(drawer, camera);
    tiles.draw(drawer, map, camera);
    trail.draw(drawer, camera);
    player.draw(drawer);
}

void GamePlay::drawSpeed(Drawer& drawer) const {
    drawer.drawText("Speed:", displayFont, 384, 40, 1024, 1, 1, 1, 1, 1);
    drawer.drawText("88mph", displayFont, 1024, 112, 512, 1, 1, 1, 1, 1);
    drawer.fillRect(barX - 8, barY - 8, 608, barHeight + 16, 255, 255, 255, 255);
    drawer.fillRect(barX - 4, barY - 4, 600, barHeight + 8, 0, 0, 0, 255);
    drawer.fillRect(barX, barY, player.kickSpeed() * barUnits, barHeight, 255, 0, 0, 255);
    drawer.fillRect(barX + goalSpeed * barUnits, barY - 12, markWidth, barHeight + 24, 255, 255,
                    255, 255);
}

void GamePlay::keyPressed(const std::string& action, const SDL_keysym* /*key*/) {
    if (action == "Escape") quit();
    if (action == "Action") player.requestKick();
    holdKey(action, true);
}

void GamePlay::keyReleased(const std::string& action, const SDL_keysym* /*key*/) {
    holdKey(action, false);
}

void GamePlay::holdKey(const std::string& action, bool held) {
    if (action == "P1Up") heldKeys.up = held;
    if (action == "P1Left") heldKeys.left = held;
    if (action == "P1Right") heldKeys.right = held;
    if (action == "P1Down") heldKeys.down = held;
}
