// SPDX-License-Identifier: Zlib
// From keys and joysticks to the program's own codes, and from codes to actions.
#include "app/InputCodes.h"
#include "tests/support/ApplicationFixture.h"

TEST(InputCodes, EveryKeyHasItsOwnCodeOrNone) {
    std::uint32_t hash = 0; // of all keys' codes
    for (int key = SDLK_FIRST; key <= SDLK_LAST; ++key) {
        hash = hash * 31 + static_cast<std::uint32_t>(inputCodeForKey(static_cast<SDLKey>(key)));
    }
    EXPECT_EQ(hash, 1145538139u);
}

TEST(InputCodes, JoysticksHaveBlocksOfTwentyAndShareOneCodeFromTheFifthOn) {
    EXPECT_EQ(inputCodeForJoystick(0, 0), 68);
    EXPECT_EQ(inputCodeForJoystick(3, 19), 147);
    for (const int joystick : {4, -1}) EXPECT_EQ(inputCodeForJoystick(joystick, 9), 78);
}

TEST(InputCodes, TheSignOfAnAxisChoosesItsDirection) {
    const int below[] = {3, 0, 5, 9, 6, 0};
    const int above[] = {1, 2, 4, 7, 8, 0};
    for (int axis = 0; axis < 6; ++axis) {
        EXPECT_EQ(directionOfAxis(axis, -1 / 32768.0f), below[axis]) << axis;
        EXPECT_EQ(directionOfAxis(axis, 0), above[axis]) << axis;
    }
}

class InputMap : public ApplicationFixture {
protected:
    static void pushButton(Uint8 type, Uint8 joystick, Uint8 button) {
        push({.jbutton = {type, joystick, button, 0}});
    }
    static void pushAxis(Uint8 joystick, Uint8 axis, Sint16 value) {
        push({.jaxis = {SDL_JOYAXISMOTION, joystick, axis, value}});
    }
    void bind(const std::string& action, std::int32_t code) {
        Inspector::bind(*application, action, code);
    }
};

TEST_F(InputMap, SevenKeysAreBoundAndTheScreenReceivesAllInOrder) {
    for (const SDLKey key : {SDLK_UP, SDLK_LEFT, SDLK_RIGHT, SDLK_DOWN, SDLK_SPACE, SDLK_z}) {
        pushKey(SDL_KEYDOWN, key);
    }
    for (const SDLKey key : {SDLK_LEFT, SDLK_x, SDLK_ESCAPE}) pushKey(SDL_KEYUP, key);
    EXPECT_EQ(recordFrame(), (Log{"pressed P1Up", "pressed P1Left", "pressed P1Right",
                                  "pressed P1Down", "pressed Action", "pressed Action",
                                  "released P1Left", "released ", "released Escape", "draw"}));
    bind("Other", 41);
    pushKey(SDL_KEYUP, SDLK_SPACE);
    EXPECT_EQ(recordFrame(), (Log{"released Action", "draw"})) << "the first binding stays";
}

TEST_F(InputMap, ButtonCodesStartFourAboveTheDirections) {
    bind("Jump", 88 + 4 + 2);
    bind("Far", 78);
    pushButton(SDL_JOYBUTTONDOWN, 1, 2);
    pushButton(SDL_JOYBUTTONUP, 1, 2);
    pushButton(SDL_JOYBUTTONDOWN, 0, 22); // falls into the block of joystick 1
    pushButton(SDL_JOYBUTTONDOWN, 4, 0);
    EXPECT_EQ(recordFrame(), (Log{"pressed Jump button", "released Jump button",
                                  "pressed Jump button", "pressed Far button", "draw"}));
}

TEST_F(InputMap, AnAxisReportsDirectionAndMagnitudeAndAtRestBothDirections) {
    bind("Left", 68 + 3);
    pushAxis(0, 0, -32768);
    pushAxis(0, 2, 16384);
    pushAxis(5, 1, -16384);
    EXPECT_EQ(recordFrame(), (Log{"axis Left 1 0 3", "axis  0.5 0 4", "axis  0.5 5 0", "draw"}));
    for (Uint8 axis = 0; axis < 4; ++axis) pushAxis(1, axis, 0);
    EXPECT_EQ(recordFrame(), (Log{"axis  0 1 3", "axis  0 1 1", "axis  0 1 2", "axis  0 1 5",
                                  "axis  0 1 4", "axis  0 1 7", "draw"}));
}
