// SPDX-License-Identifier: Zlib
#include "drawing/PowerOfTwo.h"

#include <bit>
#include <cstring>
#include <new>

static constexpr std::size_t pixelBytes = 4;

std::uint32_t nextPowerOfTwo(std::uint32_t n) {
    return std::bit_ceil(n);
}

bool isPowerOfTwo(std::uint32_t n) {
    return n != 0 && n == nextPowerOfTwo(n);
}

PixelBuffer padRows(const PixelBuffer& pixels, std::uint32_t width, std::uint32_t height,
                    std::uint32_t paddedWidth, std::uint32_t paddedHeight) {
    const std::size_t rowBytes = width * pixelBytes;
    const std::size_t paddedRowBytes = paddedWidth * pixelBytes;
    PixelBuffer padded(new (std::nothrow) std::uint8_t[paddedRowBytes * paddedHeight]());
    if (!padded) return padded;
    for (std::size_t y = 0; y < height; ++y) {
        const std::uint8_t* source = pixels.get() + y * rowBytes;
        std::uint8_t* target = padded.get() + y * paddedRowBytes;
        std::memcpy(target, source, rowBytes);
        std::memset(target + rowBytes, source[rowBytes - 1], paddedRowBytes - rowBytes);
    }
    return padded;
}

void repeatLastRow(const PixelBuffer& padded, std::uint32_t height, std::uint32_t paddedWidth,
                   std::uint32_t paddedHeight) {
    const std::size_t paddedRowBytes = paddedWidth * pixelBytes;
    const std::uint8_t* last = padded.get() + (height - 1) * paddedRowBytes;
    for (std::size_t y = height; y < paddedHeight; ++y) {
        std::memcpy(padded.get() + y * paddedRowBytes, last, paddedRowBytes);
    }
}
