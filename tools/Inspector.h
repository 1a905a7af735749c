// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class Application;
class AudioSingleton;
class Drawer;
class GamePlay;
class GameState;
class LevelMap;
class Player;
struct HeldKeys;

// A friend of the game's classes. Tools and tests use it to read private fields and to set
// up situations; the game itself never does. It has three sources, so that a program links only
// what it needs: InspectorPlayer.cpp (rules), InspectorSound.cpp, and InspectorPlay.cpp for the
// rest.
class Inspector {
public:
    // The fields of a runner that the movement rules use; units as in Player.
    struct Motion {
        float x = 0;
        float y = 0;
        float vx = 0;
        float vy = 0;
        bool kicking = false;
        bool airborne = false;
        bool facingRight = true;
    };
    static Motion motion(const Player& player);
    static void setMotion(Player& player, const Motion& motion);

    // A new AudioSingleton besides the program's own.
    static std::unique_ptr<AudioSingleton> makeSound();
    static std::int32_t note(const AudioSingleton& sound, std::int32_t track, std::int32_t step);
    static int soundingVoices(const AudioSingleton& sound, std::int32_t bank);

    static Drawer& drawer(Application& application);
    static void setDrawer(Application& application, std::unique_ptr<Drawer> drawer);
    // Arguments for a window of the virtual screen's size and no sound device.
    static std::vector<std::string> quietArguments();

    static GameState* state(Application& application);
    static void setState(Application& application, std::unique_ptr<GameState> state);
    static bool runFrame(Application& application);
    static void bind(Application& application, const std::string& action, std::int32_t inputCode);

    static Player& player(GamePlay& play);
    static bool isFinished(const GamePlay& play);
    static const HeldKeys& heldKeys(const GamePlay& play);
    // Replaces the loaded level; the runner stays where it is.
    static void setLevel(GamePlay& play, const std::function<LevelMap()>& make);
};
