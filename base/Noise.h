// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

#include "base/SharedValue.h"

// The only random source of the game and the sound: a counter for the whole process and an integer
// hash of it. Both threads may use it. Two threads that draw at the same time may get the same
// number; this is harmless.

// A number above 0, up to and including 1. (64 of the 2^32 counter values round to exactly 0.)
float noiseUnit();

// A whole number from 0 to n - 1; 0 for an n of 0.
int noiseRange(int n);

// The counter. The first call sets it from the current time, so that each run differs. To repeat a
// run, store a number of your own.
SharedValue<std::uint32_t>& noiseSeed();
