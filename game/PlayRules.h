// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

#include "game/WorldPoint.h"

// The numbers of the game that its screens and the companion programs share.
inline constexpr float goalSpeed = 1.5f;               // tiles per frame, in the flight of a kick
inline constexpr WorldPoint playStart = {60, 984};     // tiles
inline constexpr WorldPoint epilogueStart = {60, 944}; // tiles
inline constexpr std::uint32_t framePeriod = 15;       // ms from frame to frame, at least
