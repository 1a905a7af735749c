// SPDX-License-Identifier: Zlib
#pragma once

// What SDL must know before it opens the window. Main thread, at start-up.

// Chooses SDL's video driver and the window's class. Call it before SDL_Init.
void setWindowEnvironment();

// Sets the window's title and icon. Call it after SDL_Init, before the window opens.
void setTitleAndIcon();
