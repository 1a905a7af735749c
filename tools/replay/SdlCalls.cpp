// SPDX-License-Identifier: Zlib
// The replacements for four calls of SDL; the linker redirects them here (--wrap).
#include "tools/replay/Replay.h"

extern "C" {
void __real_SDL_GL_SwapBuffers();

int __wrap_SDL_PollEvent(SDL_Event* event) {
    return Replay::current().pollEvent(event);
}

Uint32 __wrap_SDL_GetTicks() {
    return Replay::current().ticks();
}

void __wrap_SDL_Delay(Uint32 milliseconds) {
    Replay::current().delay(milliseconds);
}

void __wrap_SDL_GL_SwapBuffers() {
    Replay::current().swapBuffers(); // before the swap, while the picture can be read
    __real_SDL_GL_SwapBuffers();
}
}
