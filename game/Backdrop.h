// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

class Drawer;

// Paints the sky over the whole screen: a gradient from a colour at the top to white at the bottom,
// and the sky's picture added at half strength. It leaves out a band in the middle, hiddenWidth
// units wide, that the caller will cover; 0 for none.
void drawBackdrop(Drawer& drawer, std::uint32_t skyTexture, std::uint8_t red, std::uint8_t green,
                  std::uint8_t blue, float hiddenWidth);

// Adds only the sky's picture, at half strength.
void drawSky(Drawer& drawer, std::uint32_t skyTexture);
