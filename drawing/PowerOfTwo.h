// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

#include "drawing/LoadedImage.h"

// Textures have sides that are powers of two; pictures need not.

// The smallest power of two that is not below n; 1 for 0. n is at most 2^31.
std::uint32_t nextPowerOfTwo(std::uint32_t n);

bool isPowerOfTwo(std::uint32_t n);

// A zeroed buffer of paddedWidth by paddedHeight RGBA pixels with the picture in its top left
// corner. The rest of each picture row is filled with the row's last byte, its alpha, so that a
// filter at the edge meets no other colour's transparency. Null if memory runs out.
PixelBuffer padRows(const PixelBuffer& pixels, std::uint32_t width, std::uint32_t height,
                    std::uint32_t paddedWidth, std::uint32_t paddedHeight);

// Fills the rows below the picture's last one with copies of that row, padding included.
void repeatLastRow(const PixelBuffer& padded, std::uint32_t height, std::uint32_t paddedWidth,
                   std::uint32_t paddedHeight);
