// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

#include "base/SharedValue.h"

// The only random source of the game and of the sound: one counter for the whole process and an
// integer hash of it. It may be used from both threads; two that draw at the very same time may
// get the same number, which harms nobody.

// A number above 0 up to and including 1. (64 of the 2^32 counters round to exactly 0.)
float noiseUnit();

// A whole number from 0 to n - 1; 0 for an n of 0.
int noiseRange(int n);

// The counter. The first call of all sets it from the calendar, so that each run differs; a
// caller that wants the same run again stores a number of its own.
SharedValue<std::uint32_t>& noiseSeed();
