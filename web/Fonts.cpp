// SPDX-License-Identifier: Zlib
// The part of SDL_ttf that the game uses: the sizes and the pictures of single characters.
#include <SDL_ttf.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

#define STBTT_STATIC
#define STB_TRUETYPE_IMPLEMENTATION
#include <stb/stb_truetype.h>

struct _TTF_Font {
    std::vector<unsigned char> file;
    stbtt_fontinfo info = {};
    float scale = 0; // pixels per unit of the font
    int height = 0;  // pixels
    int lineSkip = 0;
};

static int wholePixels(int units, float scale) {
    return static_cast<int>(std::ceil(static_cast<float>(units) * scale));
}

int TTF_Init() {
    return 0;
}

void TTF_Quit() {}

int TTF_WasInit() {
    return 1;
}

TTF_Font* TTF_OpenFont(const char* path, int size) {
    auto font = std::make_unique<TTF_Font>();
    std::ifstream file(path, std::ios::binary);
    font->file.assign(std::istreambuf_iterator<char>(file), {});
    if (font->file.empty() || !stbtt_InitFont(&font->info, font->file.data(), 0)) return nullptr;
    font->scale = stbtt_ScaleForMappingEmToPixels(&font->info, static_cast<float>(size));
    int ascent = 0;
    int descent = 0;
    int gap = 0;
    stbtt_GetFontVMetrics(&font->info, &ascent, &descent, &gap);
    font->height = wholePixels(ascent, font->scale) - wholePixels(descent, font->scale) + 1;
    font->lineSkip = wholePixels(ascent - descent + gap, font->scale);
    return font.release();
}

void TTF_CloseFont(TTF_Font* font) {
    delete font;
}

int TTF_FontHeight(const TTF_Font* font) {
    return font->height;
}

int TTF_FontLineSkip(const TTF_Font* font) {
    return font->lineSkip;
}

int TTF_GlyphMetrics(TTF_Font* font, Uint16 character, int* minX, int* maxX, int* minY, int* maxY,
                     int* advance) {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int step = 0;
    int bearing = 0;
    stbtt_GetCodepointBox(&font->info, character, &left, &bottom, &right, &top);
    stbtt_GetCodepointHMetrics(&font->info, character, &step, &bearing);
    // As in SDL_ttf, the size is rounded, not the far edges. It decides where the lines are.
    *minX = static_cast<int>(std::floor(static_cast<float>(left) * font->scale));
    *maxX = *minX + wholePixels(right - left, font->scale);
    *maxY = wholePixels(top, font->scale);
    *minY = *maxY - wholePixels(top - bottom, font->scale);
    *advance = static_cast<int>(std::lround(static_cast<float>(step) * font->scale));
    return 0;
}

// In the colour, with the ink as opacity; null for a character without ink.
SDL_Surface* TTF_RenderGlyph_Blended(TTF_Font* font, Uint16 character, SDL_Color colour) {
    int width = 0;
    int height = 0;
    const std::unique_ptr<unsigned char, decltype(&std::free)> ink(
        stbtt_GetCodepointBitmap(&font->info, font->scale, font->scale, character, &width, &height,
                                 nullptr, nullptr),
        std::free);
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (!ink || count == 0) return nullptr;
    auto* pixels = static_cast<Uint8*>(std::malloc(count * 4));
    for (std::size_t i = 0; i < count; ++i) {
        const Uint8 pixel[] = {colour.r, colour.g, colour.b, ink.get()[i]};
        std::copy_n(pixel, 4, pixels + i * 4);
    }
    SDL_Surface* surface =
        SDL_CreateRGBSurfaceFrom(pixels, width, height, 32, width * 4, 0, 0, 0, 0);
    surface->flags = 0; // it owns its pixels
    return surface;
}
