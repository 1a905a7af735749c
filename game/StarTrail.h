// SPDX-License-Identifier: Zlib
#pragma once

#include <array>

#include "game/WorldPoint.h"

class Drawer;

// The trail that the runner leaves in the air: spinning stars in bright random colours that stay in
// place and shrink away. A screen owns it. Once per frame it calls spawn, if the runner is in the
// air, and then draw, which also ages the stars. Main thread.
class StarTrail {
public:
    // Adds a star in place of the oldest one; only the first call between two drawings counts.
    void spawn(WorldPoint position);

    void draw(Drawer& drawer, WorldPoint camera);

private:
    struct Star {
        float x = 0;    // tiles
        float y = 0;    // tiles
        float size = 0; // scale of the picture; a star lives while it is above 0
        float red = 0;  // each 0 or 1
        float green = 0;
        float blue = 0;
        float angle = 0; // degrees, 0 to 360
        float spin = 0;  // degrees per drawing, -1 to 1

        float alpha() const;
        void age();
    };

    std::array<Star, 128> stars;
    int next = 0;     // the star that spawn overwrites
    int cooldown = 0; // spawn works only at 0
};
