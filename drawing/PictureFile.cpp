// SPDX-License-Identifier: Zlib
#include "drawing/PictureFile.h"

#include <algorithm>
#include <cstring>
#include <string>

// Limits, so that examining a huge file ends. Real pictures stay far below them.
static constexpr int mostChunks = 1 << 17; // of a PNG: 1 GiB at the usual 8 KiB a chunk
static constexpr int mostSegments = 1000;  // of a JPEG, before the pixels

// A JPEG needs at least two bits for each block of 8 by 8 pixels: one for its shade and one for its
// end. This allows a file of half that length.
static constexpr std::int64_t jpegPixelsPerByte = 512;

static std::uint32_t bigEndian(const std::uint8_t* bytes, int count) {
    std::uint32_t number = 0;
    for (int i = 0; i < count; ++i) number = number << 8 | bytes[i];
    return number;
}

static std::uint32_t littleEndian(const std::uint8_t* bytes, int count) {
    std::uint32_t number = 0;
    for (int i = count; i-- > 0;) number = number << 8 | bytes[i];
    return number;
}

static bool isAllowed(std::uint64_t width, std::uint64_t height) {
    return width >= 1 && width <= PictureFile::largestSide && height >= 1 &&
           height <= PictureFile::largestSide && width * height <= PictureFile::mostPixels;
}

PictureFile::PictureFile(SDL_RWops* opened) : file(opened) {
    if (!file) return;
    length = SDL_RWseek(file, 0, RW_SEEK_END);
    format = examine();
    SDL_RWseek(file, 0, RW_SEEK_SET);
    source.seek = seekSource;
    source.read = readSource;
    source.hidden.unknown.data1 = this;
}

PictureFile::~PictureFile() {
    if (file) SDL_RWclose(file);
}

PictureFile::Format PictureFile::examine() {
    static const std::string pngStart = "\x89PNG\r\n\x1a\n";
    static const std::string jpegStart = "\xff\xd8";
    static const std::string bmpStart = "BM";
    std::uint8_t start[8];
    if (!read(0, start, sizeof start)) return Format::unreadable;
    const std::string text(start, start + sizeof start);
    parts = {{0, length}};
    if (text == pngStart && isSoundPng()) return Format::png;
    if (text.starts_with(jpegStart) && isSoundJpeg()) return Format::jpeg;
    if (text.starts_with(bmpStart) && isSoundBmp()) return Format::bmp;
    return Format::unreadable;
}

// The decoder sees only the chunks that make the picture: a short compressed text can unpack to
// gigabytes.
bool PictureFile::isSoundPng() {
    std::int64_t place = 8;
    parts = {{0, place}};
    for (int chunk = 0; chunk < mostChunks; ++chunk) {
        std::uint8_t head[16]; // length, type, and of the first chunk width and height
        if (!read(place, head, chunk == 0 ? 16 : 8)) return false;
        const std::string type(head + 4, head + 8);
        const std::int64_t end = place + 12 + bigEndian(head, 4);
        if (end > length || (type == "IHDR") != (chunk == 0)) return false;
        if (chunk == 0 && !isAllowed(bigEndian(head + 8, 4), bigEndian(head + 12, 4))) return false;
        if (type == "IHDR" || type == "PLTE" || type == "tRNS" || type == "IDAT" ||
            type == "IEND") {
            if (parts.back().end != place) parts.push_back({place, place});
            parts.back().end = end;
        }
        if (type == "IEND") return true;
        place = end;
    }
    return false;
}

// Accepts only pictures in a single pass. Decoding a hostile progressive one of 166 KB, which has
// 2001 passes over 4096 by 4096 pixels, takes 3 s. The largest picture would take 583 MiB, since
// the decoder keeps all of it in memory between the passes.
bool PictureFile::isSoundJpeg() {
    std::int64_t place = 2;
    std::uint8_t frame[6] = {}; // precision, height, width, components
    for (int segment = 0; segment < mostSegments; ++segment) {
        std::uint8_t head[4]; // 0xFF, kind, length
        if (!read(place, head, sizeof head) || head[0] != 0xFF) return false;
        const std::uint8_t kind = head[1];
        if (kind == 0xFF) { // padding
            ++place;
        } else if (kind == 0xDA) { // the pixels
            std::uint8_t components = 0;
            return frame[5] > 0 && read(place + 4, &components, 1) && components == frame[5];
        } else if (kind == 0xC0 || kind == 0xC1) { // the frame
            if (frame[5] > 0 || !read(place + 4, frame, sizeof frame)) return false;
            const std::uint32_t height = bigEndian(frame + 1, 2);
            const std::uint32_t width = bigEndian(frame + 3, 2);
            if (!isAllowed(width, height)) return false;
            if (std::int64_t{width} * height > length * jpegPixelsPerByte) return false;
        } else if (kind != 0xC4 && kind < 0xDB) { // a frame of another kind, or no segment
            return false;
        }
        if (kind != 0xFF) place += 2 + bigEndian(head + 2, 2);
    }
    return false;
}

// Accepts only 3 or 4 bytes a pixel. They are uncompressed: compressed ones have a palette.
bool PictureFile::isSoundBmp() {
    std::uint8_t head[34];
    if (!read(0, head, sizeof head)) return false;
    const bool old = littleEndian(head + 14, 4) == 12;
    const std::uint8_t* size = head + 18;
    const std::uint32_t width = littleEndian(size, old ? 2 : 4);
    std::uint32_t height = littleEndian(old ? size + 2 : size + 4, old ? 2 : 4);
    if (height > 0x80000000) height = ~height + 1; // rows from the top
    const std::uint32_t bits = littleEndian(head + (old ? 24 : 28), 2);
    const std::uint32_t compression = old ? 0 : littleEndian(head + 30, 4);
    return isAllowed(width, height) && (bits == 24 || bits == 32) &&
           (compression == 0 || compression == 3) &&
           std::int64_t{width} * height * (bits / 8) <= length;
}

bool PictureFile::read(std::int64_t place, std::uint8_t* target, int count) {
    return place + count <= length && SDL_RWseek(file, static_cast<int>(place), RW_SEEK_SET) >= 0 &&
           SDL_RWread(file, target, 1, count) == count;
}

int PictureFile::seekSource(SDL_RWops* source, int offset, int whence) {
    auto* picture = static_cast<PictureFile*>(source->hidden.unknown.data1);
    const int place = SDL_RWseek(picture->file, offset, whence);
    picture->position = std::max(place, 0);
    picture->currentPart = 0;
    return place;
}

// Beyond the end the decoder reads zeros. It ignores the end, and could go on forever with the
// bytes that it read last.
int PictureFile::readSource(SDL_RWops* source, void* target, int size, int count) {
    auto* bytes = static_cast<std::uint8_t*>(target);
    const int wanted = size * count;
    std::memset(bytes, 0, static_cast<std::size_t>(wanted));
    const int got =
        static_cast<PictureFile*>(source->hidden.unknown.data1)->readParts(bytes, wanted);
    return got / std::max(size, 1);
}

int PictureFile::readParts(std::uint8_t* target, int wanted) {
    int got = 0;
    while (got < wanted) {
        const auto part =
            std::find_if(parts.begin() + static_cast<std::ptrdiff_t>(currentPart), parts.end(),
                         [this](const Part& candidate) { return candidate.end > position; });
        if (part == parts.end()) break;
        currentPart = static_cast<std::size_t>(part - parts.begin());
        if (position < part->begin) {
            position = SDL_RWseek(file, static_cast<int>(part->begin), RW_SEEK_SET);
        }
        const std::int64_t left = std::min<std::int64_t>(wanted - got, part->end - position);
        const int now = SDL_RWread(file, target + got, 1, static_cast<int>(left));
        if (now <= 0) break;
        got += now;
        position += now;
    }
    return got;
}
