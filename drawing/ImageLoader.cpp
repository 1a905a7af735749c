// SPDX-License-Identifier: Zlib
#include "drawing/ImageLoader.h"

#include <SDL.h>
#include <SDL_image.h>

#include <limits>
#include <new>

static constexpr int largestSide = 65535; // pixels; texture sizes have 16 bits

static void copyPixel(const Uint8* source, int sourceBytes, std::uint8_t* target) {
    for (int channel = 0; channel < sourceBytes; ++channel) target[channel] = source[channel];
    if (sourceBytes == 3) target[3] = 255;
}

static LoadedImage convert(SDL_Surface* surface) {
    LoadedImage image;
    const int pixelBytes = surface->format->BytesPerPixel;
    // The library lets absurd sizes of broken files through, a negative height for instance.
    const bool sized = surface->w >= 1 && surface->w <= largestSide && surface->h >= 1 &&
                       surface->h <= largestSide && surface->pixels;
    if (!sized || (pixelBytes != 3 && pixelBytes != 4)) return image;

    const auto width = static_cast<std::size_t>(surface->w);
    const auto height = static_cast<std::size_t>(surface->h);
    image.pixels.reset(new (std::nothrow) std::uint8_t[width * height * 4]);
    if (!image.pixels) return image;
    for (std::size_t y = 0; y < height; ++y) {
        const Uint8* row = static_cast<const Uint8*>(surface->pixels) + y * surface->pitch;
        for (std::size_t x = 0; x < width; ++x) {
            copyPixel(row + x * static_cast<std::size_t>(pixelBytes), pixelBytes,
                      image.pixels.get() + (y * width + x) * 4);
        }
    }
    image.width = static_cast<std::uint32_t>(width);
    image.height = static_cast<std::uint32_t>(height);
    return image;
}

static LoadedImage convertAndFree(SDL_Surface* surface) {
    if (!surface) return {};
    LoadedImage image;
    if (SDL_LockSurface(surface) == 0) {
        image = convert(surface);
        SDL_UnlockSurface(surface);
    }
    SDL_FreeSurface(surface);
    return image;
}

LoadedImage ImageLoader::loadFromMemory(const void* data, std::size_t bytes) const {
    if (!data || bytes > std::numeric_limits<int>::max()) return {};
    SDL_RWops* source = SDL_RWFromConstMem(data, static_cast<int>(bytes));
    if (!source) return {};
    return convertAndFree(IMG_Load_RW(source, 1));
}

LoadedImage ImageLoader::loadFromFile(const std::string& path) const {
    return convertAndFree(IMG_Load(path.c_str()));
}
