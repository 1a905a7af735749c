// SPDX-License-Identifier: Zlib
#pragma once

#include "base/SharedValue.h"
#include "game/WorldPoint.h"

class Drawer;
class LevelMap;

// The direction keys that are held down.
struct HeldKeys {
    bool up = false;
    bool left = false;
    bool right = false;
    bool down = false;
};

// The runner: position, velocity, the flags of the movement rules, and the sprite. A screen owns it
// and calls update and then draw once per frame; every speed is in tiles per frame. The runner is a
// point in a tile; only that tile's four neighbours are ever tested. Main thread, except for speed.
class Player {
public:
    explicit Player(WorldPoint start);

    // Requests a jump or a wall kick for the next step only.
    void requestKick() { kickRequested = true; }

    // Makes one step by the movement rules. Only the left and right keys have an effect.
    void update(const HeldKeys& held, const LevelMap& map);

    // Draws the sprite at its fixed place on the screen and advances the animation.
    void draw(Drawer& drawer);

    // Starts the final spin, from the next draw on.
    void startWarp();

    // Tiles per frame. The audio thread may call this too; it may then combine components from two
    // consecutive frames.
    float speed() const;

    // The speed during the flight of a wall kick, otherwise 0.
    float kickSpeed() const { return kicking ? speed() : 0.0f; }

    WorldPoint position() const { return {x, y}; }
    bool isAirborne() const { return airborne; }

private:
    friend class Inspector;

    static constexpr float warpStep = 0.01f; // per drawing of the final spin

    void stepInAir(const LevelMap& map, int cx, int cy);
    void stepOnGround(const LevelMap& map, bool steered, int cx, int& cy);
    void land(const LevelMap& map, int cx, int cy);
    void steer(const HeldKeys& held);
    void limitSpeed();
    void stopAtWalls(const LevelMap& map, int cx, int cy);

    void drawRunning(Drawer& drawer) const;
    void drawSpinningAway(Drawer& drawer);
    void stepAnimation();

    float x;                      // tiles
    float y;                      // tiles
    SharedValue<float> vx = 0.0f; // tiles per frame
    SharedValue<float> vy = 0.0f; // tiles per frame, positive is downward
    bool kickRequested = false;
    bool kicking = false;   // in the flight of a kick: no steering, no speed limit
    bool airborne = true;   // shows the air sprites and leaves stars
    int runFrame = 0;       // 0 to 5
    int airFrame = 0;       // 0 to 3
    int idleFrame = 0;      // 0 to 3
    int frameCountdown = 4; // drawings until the next frame of all three
    bool facingRight = true;
    float warp = 1.0f; // below 1 during the final spin
};
