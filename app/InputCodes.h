// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include <cstdint>

// The program's own numbers for its inputs, independent of SDL's. A joystick code is a number
// within one joystick: 0 to 9 are the directions of its axes, and button b is b + 4. Codes from 20
// on fall into the next joystick's block.

// The code of a key; 0 if it has none.
std::int32_t inputCodeForKey(SDLKey key);

// The code of an input of joystick 0 to 3. All inputs of any other joystick share one code.
std::int32_t inputCodeForJoystick(std::int32_t joystick, std::int32_t joystickCode);

// The direction, a joystick code from 0 to 9, of an axis with this value. 0 counts as positive.
// Axes above 4 have direction 0.
std::int32_t directionOfAxis(std::int32_t axis, float value);
