// SPDX-License-Identifier: Zlib
#include "screens/Epilogue.h"

#include "base/FilePath.h"
#include "drawing/Drawer.h"
#include "game/Backdrop.h"
#include "game/PlayRules.h"
#include "sound/AudioSingleton.h"

static constexpr float fontSize = 64; // pixels

static std::int32_t messageFont = -1; // made by the first drawing of the process

static FilePath levelFile() {
    return FilePath::getDataDirectory().join("levels").join("episode1Epilogue.png");
}

Epilogue::Epilogue(Application& owner)
    : GameState(owner), map(levelFile()), player(epilogueStart), vortex(true) {}

void Epilogue::draw(Drawer& drawer) {
    if (messageFont < 0) messageFont = drawer.createFont("MarsNeedsCunnilingus.ttf", fontSize);
    const HeldKeys noControls;
    player.update(noControls, map);
    if (player.isAirborne()) trail.spawn(player.position());
    const WorldPoint camera = cameraFor(player.position());
    drawBackdrop(drawer, Backdrop::day);
    clouds.draw(drawer, camera);
    tiles.draw(drawer, map, camera);
    trail.draw(drawer, camera);
    player.draw(drawer);
    vortex.draw(drawer);
    drawMessages(drawer);
}

void Epilogue::drawMessages(Drawer& drawer) {
    if (messageFrames > 0) {
        --messageFrames;
    } else {
        drawer.drawText("No! it's not far enough back...", messageFont, 24, 400, 1280, 1, 0, 0, 0,
                        1);
    }
    if (endFrames > 0) {
        if (--endFrames == 0) AudioSingleton::instance().playBom();
    } else {
        drawer.drawText("TO BE CONTINUED", messageFont, 360, 200, 1024, 1, 1, 0, 0, 1);
    }
}

void Epilogue::keyPressed(const std::string& action, const SDL_keysym* /*key*/) {
    if (action == "Escape") quit();
}
