// SPDX-License-Identifier: Zlib
#pragma once

#include <array>

#include "drawing/LoadedImage.h"

class Drawer;
class OpenGLDrawer;

// The wipe between the play and the epilogue: four concentric rings that turn and flicker through
// six colours in the middle of the screen. It grows from nothing until it fills the screen, or in
// reverse shrinks from beyond it to nothing. The screen that plays owns it; a call of draw paints
// it and takes it a frame further. Main thread.
class TimeVortex {
public:
    explicit TimeVortex(bool shrinking);

    void draw(Drawer& drawer);

    // 0 is nothing; at about 1 the screen is full.
    float getSize() const { return size; }

    // Width of the band in the middle of the screen, as high as the screen, that the next drawing
    // covers for sure, in units; 0 for none.
    float hiddenWidth(const Drawer& drawer) const;

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
