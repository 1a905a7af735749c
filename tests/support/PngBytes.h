// SPDX-License-Identifier: Zlib
#pragma once

#include <png.h>

#include <cstdint>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

// Makes PNG files of several kinds in memory, with 8 bits a sample.
struct PngBytes {
    enum Kind : std::uint32_t {
        grey = PNG_FORMAT_GRAY,
        greyAlpha = PNG_FORMAT_GA,
        rgb = PNG_FORMAT_RGB,
        rgba = PNG_FORMAT_RGBA,
        palette = PNG_FORMAT_RGB_COLORMAP // its entries are red, green, blue
    };

    // samples are the rows from the top, tightly packed; their number decides the height.
    static Bytes file(Kind kind, std::uint32_t width, const Bytes& samples,
                      const Bytes& paletteEntries = {}) {
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        image.format = kind;
        image.width = width;
        image.height = static_cast<std::uint32_t>(samples.size() / PNG_IMAGE_ROW_STRIDE(image));
        image.colormap_entries =
            static_cast<std::uint32_t>(paletteEntries.size() / PNG_IMAGE_SAMPLE_CHANNELS(kind));
        Bytes bytes(2 * samples.size() + 1000);
        png_alloc_size_t length = bytes.size();
        png_image_write_to_memory(&image, bytes.data(), &length, 0, samples.data(), 0,
                                  paletteEntries.data());
        bytes.resize(length);
        return bytes;
    }
};
