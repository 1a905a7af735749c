// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL.h>

#include <cstdint>
#include <vector>

// A picture file as its decoder sees it. Levels come from strangers, and the image library's
// decoders trust what they read. So the file's bytes are examined first: its format, its size, and
// that decoding it takes no more memory or time than a picture of that size needs. Each object is
// for one decoding. Main thread.
class PictureFile {
public:
    enum class Format { unreadable, png, jpeg, bmp };

    static constexpr std::uint32_t largestSide = 65535;     // pixels; texture sizes have 16 bits
    static constexpr std::uint64_t mostPixels = 1ull << 26; // width times height

    // Takes ownership of the file, which may be null.
    explicit PictureFile(SDL_RWops* opened);
    PictureFile(const PictureFile&) = delete;
    PictureFile& operator=(const PictureFile&) = delete;
    ~PictureFile();

    Format getFormat() const { return format; }

    // The stream for the decoder of this format. Never null; owned by this object.
    SDL_RWops* getSource() { return &source; }

private:
    struct Part {
        std::int64_t begin; // byte of the file
        std::int64_t end;   // byte after the last
    };

    Format examine();
    bool isSoundPng();
    bool isSoundJpeg();
    bool isSoundBmp();
    bool read(std::int64_t place, std::uint8_t* target, int count); // false if not all are there

    int readParts(std::uint8_t* target, int wanted); // returns how many bytes there were

    static int seekSource(SDL_RWops* source, int offset, int whence);
    static int readSource(SDL_RWops* source, void* target, int size, int count);

    SDL_RWops* file;
    SDL_RWops source = {};
    std::int64_t length = 0; // bytes
    std::vector<Part> parts; // what the decoder sees, in order
    std::size_t currentPart = 0;
    std::int64_t position = 0; // byte of the file that is read next
    Format format = Format::unreadable;
};
