// SPDX-License-Identifier: Zlib
// Turns SDL's events into calls on the current state. Each call reads the state again, since the
// call before may have replaced it.
#include <cmath>

#include "app/Application.h"
#include "app/InputCodes.h"
#include "drawing/Drawer.h"
#include "screens/GameState.h"

static constexpr std::int32_t firstButton = 4; // the joystick code of button 0

void Application::bindDefaults() {
    bind("P1Up", inputCodeForKey(SDLK_UP));
    bind("P1Left", inputCodeForKey(SDLK_LEFT));
    bind("P1Right", inputCodeForKey(SDLK_RIGHT));
    bind("P1Down", inputCodeForKey(SDLK_DOWN));
    bind("Escape", inputCodeForKey(SDLK_ESCAPE));
    bind("Action", inputCodeForKey(SDLK_SPACE));
    bind("Action", inputCodeForKey(SDLK_z));
}

void Application::bind(const std::string& action, std::int32_t inputCode) {
    bindings.insert({inputCode, action}); // an existing binding stays
}

std::string Application::actionForKey(const SDL_keysym* key) {
    return bindings[inputCodeForKey(key->sym)];
}

std::string Application::actionForJoystick(std::int32_t joystick, std::int32_t joystickCode) {
    return bindings[inputCodeForJoystick(joystick, joystickCode)];
}

void Application::onKeyDown(const SDL_keysym& key) {
    if (state) state->keyPressed(actionForKey(&key), &key);
}

void Application::onKeyUp(const SDL_keysym& key) {
    if (state) state->keyReleased(actionForKey(&key), &key);
}

void Application::onJoystickButtonDown(std::int32_t joystick, std::int32_t button) {
    if (state) state->keyPressed(actionForJoystick(joystick, firstButton + button), nullptr);
}

void Application::onJoystickButtonUp(std::int32_t joystick, std::int32_t button) {
    if (state) state->keyReleased(actionForJoystick(joystick, firstButton + button), nullptr);
}

// There is no dead zone: only the value's sign chooses the direction.
void Application::onJoystickAxis(std::int32_t joystick, std::int32_t axis, float value) {
    // At rest, axes 0 and 2 report both of their directions; the others report one.
    if (value == 0 && axis == 0) reportAxis(joystick, 3, 0);
    if (value == 0 && axis == 2) reportAxis(joystick, 5, 0);
    reportAxis(joystick, directionOfAxis(axis, value), std::fabs(value));
}

void Application::reportAxis(std::int32_t joystick, std::int32_t direction, float magnitude) {
    if (!state) return;
    state->joystickAxis(actionForJoystick(joystick, direction), magnitude, joystick, direction);
}

void Application::onMouseMotion(std::int32_t x, std::int32_t y) {
    if (state) state->mouseMoved(virtualX(x), virtualY(y));
}

void Application::onMouseButtonDown(std::int32_t button, std::int32_t x, std::int32_t y) {
    if (!state) return;
    switch (button) {
    case SDL_BUTTON_WHEELUP: state->mouseWheel(0); break;
    case SDL_BUTTON_WHEELDOWN: state->mouseWheel(1); break;
    default: state->mouseDown(button, virtualX(x), virtualY(y));
    }
}

void Application::onMouseButtonUp(std::int32_t button, std::int32_t x, std::int32_t y) {
    if (state) state->mouseUp(button, virtualX(x), virtualY(y));
}

// Converts pixels of the window to units, without regard to black bars.
static std::int32_t toUnits(std::int32_t pixel, std::int32_t windowSize, std::int16_t units) {
    const float fraction = static_cast<float>(pixel) / static_cast<float>(windowSize);
    const float place = fraction * static_cast<float>(units);
    // With a window size of 0 the result is not finite.
    return std::fabs(place) < 1e9f ? static_cast<std::int32_t>(place) : 0;
}

std::int32_t Application::virtualX(std::int32_t x) const {
    return toUnits(x, windowWidth, drawer->width);
}

std::int32_t Application::virtualY(std::int32_t y) const {
    return toUnits(y, windowHeight, drawer->height);
}
