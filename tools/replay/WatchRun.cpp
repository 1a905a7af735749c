// SPDX-License-Identifier: Zlib
#include "tools/replay/WatchRun.h"

#include "drawing/OpenGLDrawer.h"
#include "tools/Inspector.h"

WatchRun::WatchRun(const InputScript& played, const RunLevel& level, const Options& chosen,
                   double wantedSpeed, std::uint32_t first)
    : ScriptRun(played, level, chosen), speed(wantedSpeed), from(first) {}

double WatchRun::framesPerSecond() const {
    return shownUntil > shownSince ? (frame - from) * 1000.0 / (shownUntil - shownSince) : 0;
}

void WatchRun::takeWindowEvent(const SDL_Event& event) {
    ScriptRun::takeWindowEvent(event);
    if (event.type == SDL_KEYDOWN || event.type == SDL_JOYBUTTONDOWN) closed = true;
}

void WatchRun::addEvents() {
    // Skipped frames are drawn without a pixel, since drawing is what steps the game.
    if (from > 0 && frame == 0) {
        glCullFace(GL_FRONT_AND_BACK);
        glEnable(GL_CULL_FACE);
    }
    if (frame == from) {
        glDisable(GL_CULL_FACE);
        // Its copy was made of a frame without a pixel.
        static_cast<OpenGLDrawer&>(Inspector::drawer(*application)).dropBackground();
        shownSince = GameRun::ticks();
    }
    ScriptRun::addEvents();
}

bool WatchRun::finishFrame() {
    if (frame < from) return false;
    shownUntil = GameRun::ticks();
    return true;
}

Uint32 WatchRun::ticks() {
    if (frame < from) return skipped;
    return skipped + static_cast<Uint32>((GameRun::ticks() - shownSince) * speed);
}

void WatchRun::delay(Uint32 milliseconds) {
    if (frame < from) {
        skipped += milliseconds;
        return;
    }
    owed += milliseconds / speed;
    const auto whole = static_cast<Uint32>(owed);
    owed -= whole;
    GameRun::delay(whole);
}
