// SPDX-License-Identifier: Zlib
// The decoders of pictures under SDL_image's names. The game refuses a PNG picture that the
// desktop's decoder gives as a palette or as shades of grey, so this one gives no picture for it.
#include <SDL_image.h>

#include <cstdint>

#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_ONLY_BMP
#define STBI_NO_STDIO
#define STBI_NO_SIMD
#include <stb/stb_image.h>

static int readSource(void* source, char* target, int bytes) {
    return SDL_RWread(static_cast<SDL_RWops*>(source), target, 1, bytes);
}

static void skipSource(void* source, int bytes) {
    SDL_RWseek(static_cast<SDL_RWops*>(source), bytes, RW_SEEK_CUR);
}

static SDL_Surface* decode(SDL_RWops* source, int channels) {
    const stbi_io_callbacks calls = {readSource, skipSource, [](void*) { return 0; }};
    int width = 0;
    int height = 0;
    int found = 0;
    SDL_RWseek(source, 0, RW_SEEK_SET);
    stbi_uc* pixels = stbi_load_from_callbacks(&calls, source, &width, &height, &found, channels);
    if (!pixels) return nullptr;
    SDL_Surface* surface =
        SDL_CreateRGBSurfaceFrom(pixels, width, height, channels * 8, width * channels, 0, 0, 0, 0);
    surface->flags = 0; // it owns its pixels
    return surface;
}

SDL_Surface* IMG_LoadPNG_RW(SDL_RWops* source) {
    constexpr int kindPlace = 25; // in the file
    constexpr std::uint8_t grey = 0;
    constexpr std::uint8_t palette = 3;
    std::uint8_t kind = 0;
    SDL_RWseek(source, kindPlace, RW_SEEK_SET);
    if (SDL_RWread(source, &kind, 1, 1) != 1 || kind == grey || kind == palette) return nullptr;
    return decode(source, 4);
}

SDL_Surface* IMG_LoadJPG_RW(SDL_RWops* source) {
    return decode(source, 3);
}

SDL_Surface* IMG_LoadBMP_RW(SDL_RWops* source) {
    return decode(source, 4);
}
