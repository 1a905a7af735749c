// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include <cstdint>

// The program's own numbers for its inputs, independent of SDL's. A joystick code counts
// within one joystick: 0 to 9 are the directions of its axes, its button b is b + 4; from 20 on it
// is in the next joystick's block.

// The code of a key, 0 for a key that has none.
std::int32_t inputCodeForKey(SDLKey key);

// The code of an input of joystick 0 to 3; all inputs of all others share one code.
std::int32_t inputCodeForJoystick(std::int32_t joystick, std::int32_t joystickCode);

// The direction, a joystick code from 0 to 9, of a position of an axis. Position 0 counts as the
// positive side. Axes above 4 have the direction 0.
std::int32_t directionOfAxis(std::int32_t axis, float value);
