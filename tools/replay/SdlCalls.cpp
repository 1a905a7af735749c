// SPDX-License-Identifier: Zlib
// The replacements for four calls of SDL; the linker redirects them here (--wrap).
#include "tools/replay/GameRun.h"

extern "C" {
int __wrap_SDL_PollEvent(SDL_Event* event) {
    return GameRun::current().pollEvent(event);
}

Uint32 __wrap_SDL_GetTicks() {
    return GameRun::current().ticks();
}

void __wrap_SDL_Delay(Uint32 milliseconds) {
    GameRun::current().delay(milliseconds);
}

void __wrap_SDL_GL_SwapBuffers() {
    GameRun::current().swapBuffers();
}
}
