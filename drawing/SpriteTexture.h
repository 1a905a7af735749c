// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <cstdint>

class Drawer;
class OpenGLDrawer;

// Decodes entry `sprite` of spriteImages and makes a texture from it with the drawer's current
// filtering. Returns the handle, 0 if the picture could not be decoded.
std::uint32_t createSpriteTexture(Drawer& drawer, std::size_t sprite);

// The same with hard pixels. Textures made afterwards are smoothed.
std::uint32_t createHardSpriteTexture(OpenGLDrawer& drawer, std::size_t sprite);
