// SPDX-License-Identifier: Zlib
#include "drawing/ImageLoader.h"

#include <SDL.h>
#include <SDL_image.h>

#include <cstring>
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

static SDL_RWops* fileOf(SDL_RWops* source) {
    return static_cast<SDL_RWops*>(source->hidden.unknown.data1);
}

static int seekFile(SDL_RWops* source, int offset, int whence) {
    return SDL_RWseek(fileOf(source), offset, whence);
}

static int readFileOrZeros(SDL_RWops* source, void* target, int size, int count) {
    std::memset(target, 0, static_cast<std::size_t>(size) * static_cast<std::size_t>(count));
    return SDL_RWread(fileOf(source), target, size, count);
}

static int closeFile(SDL_RWops* source) {
    SDL_RWclose(fileOf(source));
    SDL_FreeRW(source);
    return 0;
}

// Behind the end of a file there are zeros. The library takes no notice of the end, and could go on
// for ever with the bytes that it read last.
static LoadedImage load(SDL_RWops* file) {
    SDL_RWops* source = file ? SDL_AllocRW() : nullptr;
    if (!source) return {};
    source->seek = seekFile;
    source->read = readFileOrZeros;
    source->write = nullptr;
    source->close = closeFile;
    source->hidden.unknown.data1 = file;
    return convertAndFree(IMG_Load_RW(source, 1));
}

LoadedImage ImageLoader::loadFromMemory(const void* data, std::size_t bytes) const {
    if (!data || bytes > std::numeric_limits<int>::max()) return {};
    return load(SDL_RWFromConstMem(data, static_cast<int>(bytes)));
}

LoadedImage ImageLoader::loadFromFile(const std::string& path) const {
    return load(SDL_RWFromFile(path.c_str(), "rb"));
}
