// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>
#include <SDL_ttf.h>

#include <memory>
#include <string>

// A TrueType file, opened at a size through SDL_ttf. Characters are single bytes, all sizes are in
// pixels. The library must be started before. Main thread.
class FontFile {
public:
    // Of one character; x from the pen to the right, y from the baseline upward.
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

    // The larger of the step from line to line and the height of a line.
    int lineHeight() const;

    // The ink of a character, 4 bytes a pixel, white with alpha; null if it has none.
    Surface render(char character) const;

private:
    std::unique_ptr<TTF_Font, void (*)(TTF_Font*)> font;
};
