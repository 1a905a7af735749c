// SPDX-License-Identifier: Zlib
#pragma once

class Drawer;

// What lies behind everything else on a screen.
enum class Backdrop {
    night, // of the title
    dawn,  // of the play
    day,   // of the epilogue
};

// Paints a backdrop over the whole screen: a gradient, and the sky's picture added at half
// strength. Call it first in a frame. It may leave out a band in the middle, hiddenWidth units
// wide, that the caller will cover; 0 for none.
void drawBackdrop(Drawer& drawer, Backdrop backdrop, float hiddenWidth);
