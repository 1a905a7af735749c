// SPDX-License-Identifier: Zlib
#include "screens/TitleScreen.h"

#include <algorithm>

#include "drawing/Drawer.h"
#include "game/Backdrop.h"
#include "sound/AudioSingleton.h"

static constexpr int framesPerPage = 120;
static constexpr int logoPage = 4;    // the first page with the logo, and without a line of story
static constexpr int callPage = 5;    // the first page with the call to run; a key starts the play
static constexpr int lastPage = 6;    // same appearance as the page before; stays
static constexpr float fontSize = 48; // pixels

static std::int32_t storyFont = -1; // made by the first drawing of the process

void TitleScreen::draw(Drawer& drawer) {
    if (storyFont < 0) storyFont = drawer.createFont("MarsNeedsCunnilingus.ttf", fontSize);
    drawBackdrop(drawer, page < logoPage ? Backdrop::night : Backdrop::logo);
    const auto line = static_cast<std::size_t>(std::min(page, logoPage));
    drawer.drawText(lines[line], storyFont, 128, 400, 1024, 1, 1, 1, 0, 1);
    if (page >= callPage) {
        drawer.drawText(lines[callPage], storyFont, 128, 640, 1024, 1, 1, 0, 1, 1);
    }
    // On the last page the count continues below 0, without effect.
    if (--pageFrames == 0) turnPage();
}

void TitleScreen::keyPressed(const std::string& action, const SDL_keysym* /*key*/) {
    if (action == "Escape") {
        quit();
    } else if (page >= callPage) {
        changeState("GamePlay", ""); // deletes this object
    } else {
        turnPage();
    }
}

void TitleScreen::turnPage() {
    ++page;
    if (page == lastPage) return;
    pageFrames = framesPerPage;
    AudioSingleton::instance().playBom();
}
