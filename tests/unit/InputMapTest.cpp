// SPDX-License-Identifier: Zlib
// From keys and joysticks to the program's own codes, and from codes to actions.
#include <map>

#include "app/InputCodes.h"
#include "tests/support/ApplicationFixture.h"

TEST(InputCodes, EveryKeyOfTheKeyboardHasItsCodeOrNone) {
    std::map<int, int> codes = {{SDLK_LSHIFT, 38}, {SDLK_LCTRL, 39}, {SDLK_LALT, 40}};
    int code = 1;
    for (const char key : std::string("abcdefghijklmnopqrstuvwxyz0123456789")) codes[key] = code++;
    for (const int key :
         {SDLK_TAB, SDLK_RSHIFT, SDLK_RCTRL, SDLK_RALT, SDLK_SPACE, SDLK_RETURN, SDLK_UP, SDLK_LEFT,
          SDLK_RIGHT, SDLK_DOWN, SDLK_HOME, SDLK_END, SDLK_PAGEUP, SDLK_PAGEDOWN}) {
        codes[key] = code++;
    }
    for (int key = SDLK_KP0; key <= SDLK_KP9; ++key) codes[key] = code++;
    for (const int key : {SDLK_MINUS, SDLK_EQUALS, SDLK_BACKSPACE, SDLK_DELETE, SDLK_ESCAPE,
                          SDLK_COMMA, SDLK_PERIOD}) {
        codes[key] = code++;
    }
    for (int key = SDLK_FIRST; key <= SDLK_LAST; ++key) {
        EXPECT_EQ(inputCodeForKey(static_cast<SDLKey>(key)), codes[key]) << "key " << key;
    }
}

TEST(InputCodes, JoysticksHaveBlocksOfTwentyAndShareOneCodeFromTheFifthOn) {
    EXPECT_EQ(inputCodeForJoystick(0, 0), 68);
    EXPECT_EQ(inputCodeForJoystick(1, 3), 91);
    EXPECT_EQ(inputCodeForJoystick(3, 19), 147);
    EXPECT_EQ(inputCodeForJoystick(0, 4 + 16), inputCodeForJoystick(1, 0))
        << "button 16 lies in the next joystick's block";
    for (const int joystick : {4, 5, 255, -1}) {
        EXPECT_EQ(inputCodeForJoystick(joystick, 0), 78);
        EXPECT_EQ(inputCodeForJoystick(joystick, 9), 78);
    }
}

TEST(InputCodes, AxesPickTheirDirectionByTheSignAlone) {
    const int below[] = {3, 0, 5, 9, 6, 0, 0};
    const int above[] = {1, 2, 4, 7, 8, 0, 0};
    for (int axis = 0; axis < 7; ++axis) {
        EXPECT_EQ(directionOfAxis(axis, -1 / 32768.0f), below[axis]) << axis;
        EXPECT_EQ(directionOfAxis(axis, 1 / 32768.0f), above[axis]) << axis;
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
};

TEST_F(InputMap, SevenKeysAreBoundAndAllReachTheScreenInOrder) {
    const std::map<std::int32_t, std::string> expected = {
        {43, "P1Up"},   {44, "P1Left"}, {45, "P1Right"}, {46, "P1Down"},
        {65, "Escape"}, {41, "Action"}, {26, "Action"},
    };
    EXPECT_EQ(Inspector::bindings(*application), expected);
    pushKey(SDL_KEYDOWN, SDLK_LEFT);
    pushKey(SDL_KEYDOWN, SDLK_RIGHT);
    pushKey(SDL_KEYUP, SDLK_LEFT);
    pushKey(SDL_KEYDOWN, SDLK_z);
    pushKey(SDL_KEYUP, SDLK_INSERT);
    EXPECT_EQ(heardInFrame(), (Log{"pressed P1Left", "pressed P1Right", "released P1Left",
                                   "pressed Action", "released ", "draw"}));
}

TEST_F(InputMap, AnOlderBindingStaysAndAskingLeavesAnEmptyEntry) {
    Inspector::bind(*application, "Other", 41);
    pushKey(SDL_KEYDOWN, SDLK_SPACE);
    pushKey(SDL_KEYDOWN, SDLK_F1);
    EXPECT_EQ(heardInFrame(), (Log{"pressed Action", "pressed ", "draw"}));

    EXPECT_EQ(Inspector::bindings(*application).size(), 8u);
    Inspector::bind(*application, "Other", 0); // the code of F1 has its entry by now
    pushKey(SDL_KEYDOWN, SDLK_F2);
    EXPECT_EQ(heardInFrame(), (Log{"pressed ", "draw"}));
}

TEST_F(InputMap, ButtonsComeFourAboveTheDirections) {
    Inspector::bind(*application, "Jump", 88 + 4 + 2);
    Inspector::bind(*application, "Far", 78);
    pushButton(SDL_JOYBUTTONDOWN, 1, 2);
    pushButton(SDL_JOYBUTTONUP, 1, 2);
    pushButton(SDL_JOYBUTTONDOWN, 0, 22); // spills over into joystick 1
    pushButton(SDL_JOYBUTTONDOWN, 4, 0);
    pushButton(SDL_JOYBUTTONDOWN, 0, 6);
    EXPECT_EQ(heardInFrame(),
              (Log{"pressed Jump button", "released Jump button", "pressed Jump button",
                   "pressed Far button", "pressed Far button", "draw"}));
}

TEST_F(InputMap, AnAxisTellsItsDirectionAndHowFarAndAtRestEndsBoth) {
    Inspector::bind(*application, "Left", 68 + 3);
    pushAxis(0, 0, -32768);
    pushAxis(0, 0, 16384);
    pushAxis(0, 2, 16384);
    pushAxis(5, 1, -1);
    EXPECT_EQ(heardInFrame(), (Log{"axis Left 1.000000 0 3", "axis  0.500000 0 1",
                                   "axis  0.500000 0 4", "axis  0.000031 5 0", "draw"}));
    for (Uint8 axis = 0; axis < 6; ++axis) pushAxis(1, axis, 0); // both of the first and the third
    EXPECT_EQ(heardInFrame(), (Log{"axis  0.000000 1 3", "axis  0.000000 1 1", "axis  0.000000 1 2",
                                   "axis  0.000000 1 5", "axis  0.000000 1 4", "axis  0.000000 1 7",
                                   "axis  0.000000 1 8", "axis  0.000000 1 0", "draw"}));
}
