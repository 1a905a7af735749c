// SPDX-License-Identifier: Zlib
#pragma once

class Drawer;

// What lies behind everything else on a screen.
enum class Backdrop {
    night, // of the title
    logo,  // the same with the title's logo
    dawn,  // of the play
    day,   // of the epilogue
};

// Paints a backdrop over the whole screen: a gradient, the sky's picture added at half strength,
// and perhaps the logo. Call it first in a frame.
void drawBackdrop(Drawer& drawer, Backdrop backdrop);
