// SPDX-License-Identifier: Zlib
#include "app/InputCodes.h"

static constexpr std::int32_t firstLetter = 1;
static constexpr std::int32_t firstDigit = 27;
static constexpr std::int32_t firstKeypadDigit = 51;
static constexpr std::int32_t firstJoystick = 68;
static constexpr std::int32_t joystickBlock = 20; // codes per joystick
static constexpr std::int32_t otherJoysticks = 78;

std::int32_t inputCodeForKey(SDLKey key) {
    if (key >= SDLK_a && key <= SDLK_z) return firstLetter + (key - SDLK_a);
    if (key >= SDLK_0 && key <= SDLK_9) return firstDigit + (key - SDLK_0);
    if (key >= SDLK_KP0 && key <= SDLK_KP9) return firstKeypadDigit + (key - SDLK_KP0);
    switch (key) {
    case SDLK_TAB: return 37;
    case SDLK_RSHIFT:
    case SDLK_LSHIFT: return 38;
    case SDLK_RCTRL:
    case SDLK_LCTRL: return 39;
    case SDLK_RALT:
    case SDLK_LALT: return 40;
    case SDLK_SPACE: return 41;
    case SDLK_RETURN: return 42;
    case SDLK_UP: return 43;
    case SDLK_LEFT: return 44;
    case SDLK_RIGHT: return 45;
    case SDLK_DOWN: return 46;
    case SDLK_HOME: return 47;
    case SDLK_END: return 48;
    case SDLK_PAGEUP: return 49;
    case SDLK_PAGEDOWN: return 50;
    case SDLK_MINUS: return 61;
    case SDLK_EQUALS: return 62;
    case SDLK_BACKSPACE: return 63;
    case SDLK_DELETE: return 64;
    case SDLK_ESCAPE: return 65;
    case SDLK_COMMA: return 66;
    case SDLK_PERIOD: return 67;
    default: return 0;
    }
}

std::int32_t inputCodeForJoystick(std::int32_t joystick, std::int32_t joystickCode) {
    if (joystick < 0 || joystick > 3) return otherJoysticks;
    return firstJoystick + joystick * joystickBlock + joystickCode;
}

std::int32_t directionOfAxis(std::int32_t axis, float value) {
    const bool negative = value < 0;
    switch (axis) {
    case 0: return negative ? 3 : 1;
    case 1: return negative ? 0 : 2;
    case 2: return negative ? 5 : 4;
    case 3: return negative ? 9 : 7;
    case 4: return negative ? 6 : 8;
    default: return 0;
    }
}
