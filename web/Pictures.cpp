// SPDX-License-Identifier: Zlib
// The decoders of pictures under SDL_image's names. The game refuses a PNG picture that the
// desktop's decoder gives as a palette or as shades of grey, so this one gives no picture for it.
#include <SDL_image.h>

#include <vector>

#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_ONLY_BMP
#define STBI_NO_STDIO
#define STBI_NO_SIMD
#include <stb/stb_image.h>

static constexpr int widestSurface = 16383; // pixels; its rows have at most 65535 bytes

static std::vector<stbi_uc> readAll(SDL_RWops* source) {
    std::vector<stbi_uc> bytes(static_cast<std::size_t>(SDL_RWseek(source, 0, RW_SEEK_END)));
    SDL_RWseek(source, 0, RW_SEEK_SET);
    SDL_RWread(source, bytes.data(), 1, static_cast<int>(bytes.size()));
    return bytes;
}

static SDL_Surface* decode(const std::vector<stbi_uc>& file, int channels) {
    int width = 0;
    int height = 0;
    int found = 0;
    stbi_uc* pixels = stbi_load_from_memory(file.data(), static_cast<int>(file.size()), &width,
                                            &height, &found, channels);
    if (!pixels || width > widestSurface) {
        stbi_image_free(pixels);
        return nullptr;
    }
    SDL_Surface* surface =
        SDL_CreateRGBSurfaceFrom(pixels, width, height, channels * 8, width * channels, 0, 0, 0, 0);
    surface->flags = 0; // it owns its pixels
    return surface;
}

SDL_Surface* IMG_LoadPNG_RW(SDL_RWops* source) {
    constexpr std::size_t kindPlace = 25;
    constexpr stbi_uc grey = 0;
    constexpr stbi_uc palette = 3;
    const std::vector<stbi_uc> file = readAll(source);
    if (file.size() <= kindPlace) return nullptr;
    const stbi_uc kind = file[kindPlace];
    return kind == grey || kind == palette ? nullptr : decode(file, 4);
}

SDL_Surface* IMG_LoadJPG_RW(SDL_RWops* source) {
    return decode(readAll(source), 3);
}

SDL_Surface* IMG_LoadBMP_RW(SDL_RWops* source) {
    return decode(readAll(source), 4);
}
