// SPDX-License-Identifier: Zlib
#include "drawing/ImageLoader.h"

#include <SDL.h>
#include <SDL_image.h>

#include <cstring>
#include <limits>
#include <new>

#include "drawing/PictureFile.h"

static void copyPixel(const Uint8* source, int sourceBytes, std::uint8_t* target) {
    // Copying a fixed number of bytes is much faster.
    if (sourceBytes == 4) {
        std::memcpy(target, source, 4);
    } else {
        std::memcpy(target, source, 3);
        target[3] = 255;
    }
}

static LoadedImage convert(SDL_Surface* surface) {
    LoadedImage image;
    const int pixelBytes = surface->format->BytesPerPixel;
    const bool sized = surface->w >= 1 && surface->h >= 1 && surface->pixels;
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

static LoadedImage load(SDL_RWops* opened) {
    PictureFile file(opened);
    switch (file.getFormat()) {
    case PictureFile::Format::png: return convertAndFree(IMG_LoadPNG_RW(file.getSource()));
    case PictureFile::Format::jpeg: return convertAndFree(IMG_LoadJPG_RW(file.getSource()));
    case PictureFile::Format::bmp: return convertAndFree(IMG_LoadBMP_RW(file.getSource()));
    case PictureFile::Format::unreadable: break;
    }
    return {};
}

LoadedImage ImageLoader::loadFromMemory(const void* data, std::size_t bytes) const {
    if (!data || bytes > std::numeric_limits<int>::max()) return {};
    return load(SDL_RWFromConstMem(data, static_cast<int>(bytes)));
}

LoadedImage ImageLoader::loadFromFile(const std::string& path) const {
    return load(SDL_RWFromFile(path.c_str(), "rb"));
}
