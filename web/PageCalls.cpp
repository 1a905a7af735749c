// SPDX-License-Identifier: Zlib
// What the page asks of the program. Calls between two frames are safe.
#include <emscripten.h>

#include "images/EmbeddedImages.h"
#include "tools/replay/GameRun.h"

extern "C" {
// A picture of spriteImages as a file, so that the page shows it without a copy of its own.
EMSCRIPTEN_KEEPALIVE const unsigned char* spriteData(int index) {
    return spriteImages[index].data;
}

EMSCRIPTEN_KEEPALIVE std::uint32_t spriteBytes(int index) {
    return spriteImages[index].bytes;
}

// Frames of the play up to the goal, 0 before it. Only while a command shows the game.
EMSCRIPTEN_KEEPALIVE std::uint32_t goalFrames() {
    const RunResult& result = GameRun::current().getResult();
    return result.goal ? result.frames : 0;
}
}
