// SPDX-License-Identifier: Zlib
#include "app/WindowSetup.h"

#include <SDL.h>

#include <string>

#include "drawing/ImageLoader.h"
#include "images/EmbeddedImages.h"
#include "platform/Platform.h"

// The library that implements SDL 1.2 on its successor reports 1.2.50 or higher. It supports
// Wayland.
static constexpr Uint8 firstWaylandPatch = 50;

// Without a display SDL would fall back on a text terminal and write escape codes to it. With SDL's
// dummy driver the program prints one clear line about the window instead.
static void chooseVideoDriver() {
    const bool supportsWayland = SDL_Linked_Version()->patch >= firstWaylandPatch;
    const bool wayland = supportsWayland && !Platform::environment("WAYLAND_DISPLAY").empty();
    const std::string chosen = Platform::environment("SDL_VIDEODRIVER");
    // The compatibility library sets "x11" when it is loaded, so that may not be the user's choice.
    if ((!chosen.empty() && chosen != "x11") || Platform::hasDisplay()) return;
    Platform::setEnvironment("SDL_VIDEODRIVER", wayland ? "wayland" : "dummy");
}

void setWindowEnvironment() {
    chooseVideoDriver();
    // Desktops find the game's name and icon by the window's class.
    Platform::setEnvironment("SDL_VIDEO_X11_WMCLASS", "tarnwick");
    // Nobody types accents here, and a key that begins one would do nothing. Reading the table for
    // composing them takes 10 ms.
    Platform::setEnvironment("XCOMPOSEFILE", "/dev/null");
}

void setTitleAndIcon() {
    SDL_WM_SetCaption("Tarnwick Episode", nullptr);
    const LoadedImage icon = ImageLoader().loadFromMemory(iconImage.data, iconImage.bytes);
    if (!icon.pixels) return;
    // Masks for bytes in the order red, green, blue, alpha.
    constexpr bool little = SDL_BYTEORDER == SDL_LIL_ENDIAN;
    const auto mask = [](int byte) { return Uint32{0xFF} << 8 * (little ? byte : 3 - byte); };
    SDL_Surface* surface = SDL_CreateRGBSurfaceFrom(
        icon.pixels.get(), static_cast<int>(icon.width), static_cast<int>(icon.height), 32,
        static_cast<int>(icon.width) * 4, mask(0), mask(1), mask(2), mask(3));
    if (!surface) return;
    SDL_WM_SetIcon(surface, nullptr); // copies what it needs
    SDL_FreeSurface(surface);
}
