// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

class Drawer;
class TimeVortex;

// The sky over the whole screen: a gradient from a colour at the top to white, and the sky's
// picture added at half strength. What a vortex in front of it hides for sure is left out; null for
// none.
void drawBackdrop(Drawer& drawer, std::uint32_t skyTexture, std::uint8_t red, std::uint8_t green,
                  std::uint8_t blue, const TimeVortex* vortex);

// The sky's picture alone, added at half strength to what is painted.
void drawSky(Drawer& drawer, std::uint32_t skyTexture);
