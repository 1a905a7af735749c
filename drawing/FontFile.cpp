// SPDX-License-Identifier: Zlib
#include "drawing/FontFile.h"

#include <algorithm>

static Uint16 codeOf(char character) {
    return static_cast<unsigned char>(character);
}

// If SDL_ttf is not initialised, TTF_OpenFont fails, but also leaks the opened file.
FontFile::FontFile(const std::string& path, int size)
    : font(TTF_WasInit() ? TTF_OpenFont(path.c_str(), size) : nullptr, TTF_CloseFont) {}

FontFile::Metrics FontFile::measure(char character) const {
    Metrics metrics;
    TTF_GlyphMetrics(font.get(), codeOf(character), &metrics.minX, &metrics.maxX, &metrics.minY,
                     &metrics.maxY, &metrics.advance);
    return metrics;
}

int FontFile::lineHeight() const {
    return std::max(TTF_FontLineSkip(font.get()), TTF_FontHeight(font.get()));
}

FontFile::Surface FontFile::render(char character) const {
    const SDL_Color white = {255, 255, 255, 0};
    return {TTF_RenderGlyph_Blended(font.get(), codeOf(character), white), SDL_FreeSurface};
}
