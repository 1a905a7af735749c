// SPDX-License-Identifier: Zlib
#pragma once

#include <array>

#include "game/WorldPoint.h"

class Drawer;

// The trail that the runner leaves in the air: spinning stars in hard random colours that stay
// where they were laid and shrink away. The screen that plays owns it and calls draw once a frame,
// which ages the stars, and before it spawn while the runner is in the air. Main thread.
class StarTrail {
public:
    // Lays a star at a position, over the oldest of the ring; at most one between two drawings.
    void spawn(WorldPoint position);

    void draw(Drawer& drawer, WorldPoint camera);

private:
    struct Star {
        float x = 0;    // tiles
        float y = 0;    // tiles
        float size = 0; // scale of the picture, and life: a star lives while it is above 0
        float red = 0;  // each 0 or 1
        float green = 0;
        float blue = 0;
        float angle = 0; // degrees, 0 to 360
        float spin = 0;  // degrees a drawing, -1 to 1

        float alpha() const;
        void age();
    };

    std::array<Star, 128> stars;
    int next = 0;     // the star that spawn overwrites
    int cooldown = 0; // spawn works only at 0
};
