// SPDX-License-Identifier: Zlib
#pragma once

#include <array>

#include "drawing/LoadedImage.h"

class Drawer;
class OpenGLDrawer;

// The transition between the play and the epilogue: four concentric rings in the middle of the
// screen that turn and flicker through six colours. It grows from nothing until it fills the
// screen; the shrinking kind starts larger than the screen and ends as nothing. A screen owns it
// and calls draw once per frame, which also advances it. Main thread.
class TimeVortex {
public:
    explicit TimeVortex(bool shrinking);

    void draw(Drawer& drawer);

    // 0 means invisible; at about 1 the screen is full.
    float getSize() const { return size; }

private:
    struct Colour {
        float red, green, blue;
    };
    static constexpr std::array<Colour, 6> colours = {
        {{1, 0, 0}, {0, 0.75f, 0}, {1, 0.5f, 0}, {0, 0, 1}, {1, 1, 0}, {1, 0, 1}}};

    static void loadTextures(OpenGLDrawer& drawer);
    static void paintRing(const LoadedImage& ring, const Colour& colour, PixelBuffer& picture);
    void step();

    float size;
    float rotation = 0;      // degrees, 0 to 360
    int colourPhase = 0;     // 0 to 5
    int colourCountdown = 8; // drawings until the next phase
    bool reverse;
};
