// SPDX-License-Identifier: Zlib
#include "drawing/SpriteTexture.h"

#include "drawing/Drawer.h"
#include "drawing/ImageLoader.h"
#include "images/EmbeddedImages.h"

std::uint32_t createSpriteTexture(Drawer& drawer, std::size_t sprite) {
    const EmbeddedImage& file = spriteImages[sprite];
    LoadedImage image = ImageLoader().loadFromMemory(file.data, file.bytes);
    return drawer.createTexture(std::move(image.pixels), image.width, image.height);
}
