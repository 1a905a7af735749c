// SPDX-License-Identifier: Zlib
#pragma once

#include <array>

#include "game/WorldPoint.h"

class Drawer;

// The far layer of the world: pale clouds that drift left and right and scroll at a sixteenth of
// the camera's speed. The field is 64 by 64 field units; a field unit is 80 by 45 units of the
// virtual screen. A screen owns it and calls draw once per frame, which also moves all clouds.
// Constructing one takes 384 numbers from the noise. Main thread.
class CloudField {
public:
    CloudField();

    void draw(Drawer& drawer, WorldPoint camera);

private:
    struct Cloud {
        float x = 0; // field units
        float y = 0; // field units
        bool driftingRight = false;

        void drift();
    };

    std::array<Cloud, 128> clouds;
};
