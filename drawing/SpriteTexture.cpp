// SPDX-License-Identifier: Zlib
#include "drawing/SpriteTexture.h"

#include <utility>

#include "drawing/ImageLoader.h"
#include "drawing/OpenGLDrawer.h"
#include "images/EmbeddedImages.h"

std::uint32_t createSpriteTexture(Drawer& drawer, std::size_t sprite) {
    const EmbeddedImage& file = spriteImages[sprite];
    LoadedImage image = ImageLoader().loadFromMemory(file.data, file.bytes);
    return drawer.createTexture(std::move(image.pixels), image.width, image.height);
}

std::uint32_t createHardSpriteTexture(OpenGLDrawer& drawer, std::size_t sprite) {
    drawer.setTextureFiltering(false);
    const std::uint32_t handle = createSpriteTexture(drawer, sprite);
    drawer.setTextureFiltering(true);
    return handle;
}
