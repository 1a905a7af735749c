// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

class Drawer;

// The sky over the whole screen: a gradient from a colour at the top to white, and the sky's
// picture added at half strength. A band in the middle that something hides, as high as the screen
// and hiddenWidth units wide, is left out; 0 for none.
void drawBackdrop(Drawer& drawer, std::uint32_t skyTexture, std::uint8_t red, std::uint8_t green,
                  std::uint8_t blue, float hiddenWidth);

// The sky's picture alone, added at half strength to what is painted.
void drawSky(Drawer& drawer, std::uint32_t skyTexture);
