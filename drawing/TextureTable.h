// SPDX-License-Identifier: Zlib
#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <map>

#include "drawing/LoadedImage.h"
#include "drawing/TextureRecord.h"

// The drawer's textures, by handle: it turns pixels into GL textures and hands out their handles.
// The sides of a GL texture are powers of two; a picture of another size is padded. The drawer owns
// the only table and uses it only while it has a GL context. Textures that are not erased live to
// the end of the process. Main thread.
class TextureTable {
public:
    // Whether textures made from now on are smoothed (the default) or keep hard pixels.
    void setFiltering(bool linear) { filter = linear ? GL_LINEAR : GL_NEAREST; }
    GLint getFilter() const { return filter; } // GL_LINEAR or GL_NEAREST

    // Makes a texture from a picture, sizes in pixels. Returns its handle; 0 for null pixels, for a
    // side outside 1 to 65535, and if memory runs out.
    std::uint32_t create(PixelBuffer pixels, std::uint32_t width, std::uint32_t height);

    // Takes ownership of a GL texture and returns its handle. Handles count up; of erased handles
    // only the newest is reused.
    std::uint32_t add(const TextureRecord& record);

    // Deletes a texture; an unknown handle is ignored.
    void erase(std::uint32_t handle);

    // Null for an unknown handle; valid until the texture is erased.
    const TextureRecord* find(std::uint32_t handle) const;

    // Makes a GL texture of any size and returns its name; with null pixels its content is
    // undefined. filter is GL_LINEAR or GL_NEAREST, wrap is GL_REPEAT or GL_CLAMP_TO_EDGE.
    static GLuint upload(const std::uint8_t* pixels, std::uint32_t width, std::uint32_t height,
                         GLint filter, GLint wrap);

    // Returns a larger picture with this one in its top left corner. The rest of each row is filled
    // with the row's last byte, an alpha, so that smoothing at the edge does not change the
    // transparency. The rows below are zero. Null if memory runs out.
    static PixelBuffer padRows(const PixelBuffer& pixels, std::uint32_t width, std::uint32_t height,
                               std::uint32_t paddedWidth, std::uint32_t paddedHeight);

private:
    std::map<std::uint32_t, TextureRecord> textures; // by handle
    std::uint32_t nextTexture = 1;                   // where the search for a free handle begins
    GLint filter = GL_LINEAR;
};
