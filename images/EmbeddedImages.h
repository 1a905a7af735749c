// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

// The pictures compiled into the executable, each a whole PNG or JPEG file in read-only memory. The
// build makes the two tables from the files in this folder. Any thread may read them.
struct EmbeddedImage {
    const unsigned char* data;
    std::uint32_t bytes;
};

// Hand-drawn characters, 64 by 64 pixels, white on clear, sorted by name: the digits 0 to 9, A, B,
// C, colon, comma, D, E, exclamation mark, F to M, minus, N, O, P, period, plus, Q, question mark,
// R to Z.
inline constexpr int glyphImageCount = 43;
extern const EmbeddedImage glyphImages[glyphImageCount];

// Sizes in pixels, width by height.
enum SpriteImage {
    spriteCloud = 0,        // 132 by 68, white at half alpha
    spriteRunnerPose = 1,   // 32 by 32, a pose that nothing draws
    spriteRunnerAir = 2,    // 3 pictures of 32 by 32: rise, top, fall
    spriteRunnerRun = 5,    // 6 pictures of 32 by 32: one stride cycle
    spriteRunnerStand = 11, // 3 pictures of 32 by 32
    spriteSky = 14,         // 1024 by 1024 JPEG, grey, repeats seamlessly
    spriteRing = 15,        // 4 pictures of 8 by 8: white rings of diameter 8, 6, 4, 2
    spriteStar = 19,        // 16 by 16, white
    spriteOutline = 20,     // 36 by 36, a black frame 2 wide
    spriteTiles = 21,       // 128 by 128: 8 by 8 cells of 16 by 16 (game/TileSheet.h)
    spriteLogo = 22,        // 1024 by 720, the title
    spriteLine = 23,        // 8 by 8, a white bar that is soft to both sides
    spriteImageCount = 24
};
extern const EmbeddedImage spriteImages[spriteImageCount];

// The window's icon, 32 by 32; it is in neither table.
extern const EmbeddedImage iconImage;
