// SPDX-License-Identifier: Zlib
#pragma once

#include <memory>

class Application;
class CloudField;
class Drawer;
class GamePlay;
class GameState;
class Player;

// The one friend of the game's classes: tools and tests look inside and set up situations with it.
// The game itself never uses it. What concerns the runner is in InspectorPlayer.cpp and needs no
// window; the effects are in InspectorEffects.cpp, the rest in InspectorPlay.cpp.
class Inspector {
public:
    // The part of a runner that the movement rules read and write; units as in Player.
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

    // One cloud of a field of 128, in field units.
    struct Cloud {
        float x = 0;
        float y = 0;
        bool driftingRight = false;
    };
    static Cloud cloud(const CloudField& field, int index);
    static void setCloud(CloudField& field, int index, const Cloud& cloud);

    static Drawer& drawer(Application& application);
    static GameState* state(Application& application);
    static void setState(Application& application, std::unique_ptr<GameState> state);
    static Player& player(GamePlay& play);
    static bool isFinished(const GamePlay& play);
};
