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

// The runner: position, velocity, the flags of the movement rules, and the sprite. The screen that
// plays owns it and calls update and then draw once a frame; one step is one frame, and every speed
// is in tiles per frame. The runner is a point that occupies the tile it lies in; only that tile's
// four neighbours are ever tested. Main thread, apart from speed.
class Player {
public:
    explicit Player(WorldPoint start);

    // Asks for a jump or a wall kick in the next step; the request is forgotten after it.
    void requestKick() { kickRequested = true; }

    // One step of the movement rules. Of the keys, left and right are read.
    void update(const HeldKeys& held, const LevelMap& map);

    // Draws the sprite at its fixed place on the screen and steps the animation.
    void draw(Drawer& drawer);

    // Starts the spin away: the next draw shows it.
    void startWarp();

    // Tiles per frame. The audio thread may ask too; it can get the two components of neighbouring
    // frames.
    float speed() const;

    // The speed in the flight of a wall kick, 0 outside it.
    float kickSpeed() const { return kicking ? speed() : 0.0f; }

    WorldPoint position() const { return {x, y}; }
    bool isAirborne() const { return airborne; }

private:
    friend class Inspector;

    static constexpr float warpStep = 0.01f; // a drawing of the spin away

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
    bool kicking = false;   // in the free flight of a kick: no steering, no speed limit
    bool airborne = true;   // shows the air sprites and feeds the star trail
    int runFrame = 0;       // 0 to 5
    int airFrame = 0;       // 0 to 3
    int idleFrame = 0;      // 0 to 3
    int frameCountdown = 4; // drawings until the three frames step
    bool facingRight = true;
    float warp = 1.0f; // below 1 the runner spins away
};
