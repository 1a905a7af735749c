// SPDX-License-Identifier: Zlib
#include "drawing/ImageLoader.h"

#include <SDL.h>
#include <SDL_image.h>

#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include "drawing/PictureFile.h"

// Returns null if there is no memory.
static PixelBuffer addAlpha(const SDL_Surface& surface) {
    const auto width = static_cast<std::size_t>(surface.w);
    const auto height = static_cast<std::size_t>(surface.h);
    PixelBuffer pixels(new (std::nothrow) std::uint8_t[width * height * 4]);
    std::uint8_t* target = pixels.get();
    if (!target) return nullptr;
    for (std::size_t y = 0; y < height; ++y) {
        const Uint8* source = static_cast<const Uint8*>(surface.pixels) + y * surface.pitch;
        for (std::size_t x = 0; x < width; ++x, source += 3, target += 4) {
            std::memcpy(target, source, 3); // a fixed number of bytes is much faster
            target[3] = 255;
        }
    }
    return pixels;
}

// Pixels of 4 bytes stay where they are, in the surface: the largest picture takes 256 MiB.
static LoadedImage convert(const std::shared_ptr<SDL_Surface>& surface) {
    LoadedImage image;
    if (surface->w < 1 || surface->h < 1 || !surface->pixels) return image;
    const int pixelBytes = surface->format->BytesPerPixel;
    if (pixelBytes == 4 && surface->pitch == surface->w * 4) {
        image.pixels = PixelBuffer(surface, static_cast<std::uint8_t*>(surface->pixels));
    } else if (pixelBytes == 3) {
        image.pixels = addAlpha(*surface);
    }
    if (!image.pixels) return image;
    image.width = static_cast<std::uint32_t>(surface->w);
    image.height = static_cast<std::uint32_t>(surface->h);
    return image;
}

// The surface is in ordinary memory, where locking it changes nothing but may fail.
static LoadedImage lockAndConvert(SDL_Surface* decoded) {
    if (!decoded) return {};
    const std::shared_ptr<SDL_Surface> surface(decoded, SDL_FreeSurface);
    LoadedImage image;
    if (SDL_LockSurface(decoded) == 0) {
        image = convert(surface);
        SDL_UnlockSurface(decoded);
    }
    return image;
}

static LoadedImage load(SDL_RWops* opened) {
    PictureFile file(opened);
    switch (file.getFormat()) {
    case PictureFile::Format::png: return lockAndConvert(IMG_LoadPNG_RW(file.getSource()));
    case PictureFile::Format::jpeg: return lockAndConvert(IMG_LoadJPG_RW(file.getSource()));
    case PictureFile::Format::bmp: return lockAndConvert(IMG_LoadBMP_RW(file.getSource()));
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
