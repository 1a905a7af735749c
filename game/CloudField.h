// SPDX-License-Identifier: Zlib
#pragma once

#include <array>

#include "game/WorldPoint.h"

class Drawer;

// The far layer of the world: pale clouds that drift to and fro and scroll with a sixteenth of the
// camera's movement. The field is 64 by 64 field units; one is 80 by 45 units of the virtual
// screen. The screen that plays owns it and calls draw once a frame, which also moves the clouds,
// seen or not. Building one draws 384 numbers from the noise. Main thread.
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
