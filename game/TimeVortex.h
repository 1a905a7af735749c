// SPDX-License-Identifier: Zlib
#pragma once

#include <array>

class Drawer;

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

private:
    friend class Inspector;

    struct Colour {
        float red, green, blue;
    };
    static constexpr std::array<Colour, 6> colours = {
        {{1, 0, 0}, {0, 0.75f, 0}, {1, 0.5f, 0}, {0, 0, 1}, {1, 1, 0}, {1, 0, 1}}};

    void step();

    float size;
    float rotation = 0;      // degrees, 0 to 360
    int colourPhase = 0;     // 0 to 5
    int colourCountdown = 8; // drawings until the next phase
    bool reverse;
};
