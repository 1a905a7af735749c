// SPDX-License-Identifier: Zlib
#include "game/Player.h"

#include <algorithm>
#include <cmath>

#include "game/LevelMap.h"

// The feel of the game. Speeds are in tiles per frame, changes of speed per frame.
static constexpr float gravity = 0.01f;
static constexpr float jumpSpeed = 0.5f;
static constexpr float kickSideways = 0.5f;
static constexpr float kickUpward = 0.25f;
static constexpr float flameRebound = 0.5f; // upward, off a flame underfoot
static constexpr float flameThrow = 1.0f;   // sideways, away from a flame at the side
static constexpr float friction = 0.66f;    // share of vx kept per frame
static constexpr float restSpeed = 0.01f;   // friction stops the runner below this
static constexpr float steering = 0.01f;
static constexpr float brakeSpeed = 0.05f; // above it, steering against the motion brakes
static constexpr float brake = 0.5f;       // share of vx kept per frame
static constexpr float speedLimit = 1.0f;  // on each axis, outside a kick
static constexpr float liftSpeed = 1.0f;   // a landing repeatedly takes this from vy
static constexpr float landingLift = 0.5f; // and raises the runner by this many tiles

static bool isSolid(const LevelMap& map, int column, int row) {
    return map.at(column, row) != LevelMap::empty;
}

static bool isFlame(const LevelMap& map, int column, int row) {
    return map.at(column, row) == LevelMap::flame;
}

Player::Player(WorldPoint start) : x(start.x), y(start.y) {}

void Player::update(const HeldKeys& held, const LevelMap& map) {
    const int cx = cellOf(x);
    int cy = cellOf(y);
    if (isSolid(map, cx, cy + 1)) {
        stepOnGround(map, held.left || held.right, cx, cy);
    } else {
        stepInAir(map, cx, cy);
    }
    // A kick that begins in this step is already free of steering and the limit.
    if (!kicking) {
        steer(held);
        limitSpeed();
    }
    stopAtWalls(map, cx, cy);
    if (vx > 0) facingRight = true;
    if (vx < 0) facingRight = false;
    x += vx;
    y += vy;
    kickRequested = false;
}

void Player::stepInAir(const LevelMap& map, int cx, int cy) {
    const float previous = vy;
    vy += gravity;
    // A kick ends at the top of its arc; one that only goes down has no top.
    if (kicking && previous < 0 && vy >= 0) kicking = false;
    if (kickRequested) {
        const bool wallRight = isSolid(map, cx + 1, cy);
        if (wallRight || isSolid(map, cx - 1, cy)) {
            vx += wallRight ? -kickSideways : kickSideways;
            vy -= kickUpward;
            kicking = true;
        }
    }
    airborne = true;
}

void Player::stepOnGround(const LevelMap& map, bool steered, int cx, int& cy) {
    // A fast fall may overshoot the ground by more than a tile, so climb back.
    while (vy > liftSpeed) {
        vy -= liftSpeed;
        y -= landingLift;
        cy = cellOf(y);
    }
    if (vy > 0) land(map, cx, cy);
    if (kickRequested) {
        airborne = true;
        vy -= jumpSpeed;
    }
    if (!steered) {
        vx *= friction;
        if (std::fabs(vx) < restSpeed) vx = 0.0f;
    }
}

void Player::land(const LevelMap& map, int cx, int cy) {
    kicking = false;
    if (isFlame(map, cx, cy + 1)) {
        // The falling speed is kept, so a fast landing is thrown less high.
        airborne = true;
        vy -= flameRebound;
    } else {
        airborne = false;
        vy = 0.0f;
    }
    y = static_cast<float>(cy);
}

void Player::steer(const HeldKeys& held) {
    if (held.left == held.right) return;
    const float direction = held.right ? 1.0f : -1.0f;
    if (vx * direction < -brakeSpeed) {
        vx *= brake;
    } else {
        vx += steering * direction;
    }
}

void Player::limitSpeed() {
    vx = std::clamp<float>(vx, -speedLimit, speedLimit);
    vy = std::clamp<float>(vy, -speedLimit, speedLimit);
}

void Player::stopAtWalls(const LevelMap& map, int cx, int cy) {
    // A stop drops the fraction of x, so it moves the runner left at either wall.
    if (vx > 0 && isSolid(map, cx + 1, cy)) {
        vx = isFlame(map, cx + 1, cy) ? -flameThrow : 0.0f;
        x = static_cast<float>(cx);
    } else if (vx < 0 && isSolid(map, cx - 1, cy)) {
        vx = isFlame(map, cx - 1, cy) ? flameThrow : 0.0f;
        x = static_cast<float>(cx);
    }
    if (vy < 0 && isSolid(map, cx, cy - 1)) vy = 0.0f;
}

void Player::startWarp() {
    warp -= warpStep;
}

float Player::speed() const {
    const float sideways = vx;
    const float downward = vy;
    return std::sqrt(sideways * sideways + downward * downward);
}
