// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>
#include <SDL_ttf.h>

#include <memory>
#include <string>

// A TrueType file, opened by SDL_ttf at one size. Characters are single bytes; all sizes are in
// pixels. It stays closed if SDL_ttf is not initialised or cannot read it; a closed one may only be
// asked isOpen. A font owns it while it builds its atlas. Main thread.
class FontFile {
public:
    // Of one character; x counts from the pen to the right, y from the baseline upward.
    struct Metrics {
        int minX = 0;
        int maxX = 0;
        int minY = 0;
        int maxY = 0;
        int advance = 0; // of the pen

        int inkWidth() const { return maxX - minX; }
        int inkHeight() const { return maxY - minY; }
    };

    using Surface = std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)>;

    FontFile(const std::string& path, int size);

    bool isOpen() const { return font != nullptr; }

    Metrics measure(char character) const;

    // The larger of the distance between lines and the height of a line.
    int lineHeight() const;

    // The ink of a character, white with alpha, 4 bytes per pixel; null if it has none.
    Surface render(char character) const;

private:
    std::unique_ptr<TTF_Font, void (*)(TTF_Font*)> font;
};
