// SPDX-License-Identifier: Zlib
#include "tools/replay/RunLink.h"

#include <zlib.h>

#include <cstdint>
#include <sstream>
#include <stdexcept>

static constexpr std::string_view letters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
static constexpr int rawDeflate = -MAX_WBITS; // without a header and a checksum

static Bytef* bytesOf(std::string& text) {
    return reinterpret_cast<Bytef*>(text.data());
}

static std::string toLetters(const std::string& bytes) {
    std::string written;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char byte : bytes) {
        bits = bits << 8 | static_cast<unsigned char>(byte);
        for (count += 8; count >= 6; count -= 6) written += letters[bits >> (count - 6) & 63];
    }
    if (count > 0) written += letters[bits << (6 - count) & 63];
    return written;
}

static std::string fromLetters(std::string_view written) {
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char letter : written) {
        const std::size_t value = letters.find(letter);
        if (value == std::string_view::npos) throw std::runtime_error("the link is broken");
        bits = bits << 6 | static_cast<std::uint32_t>(value);
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes += static_cast<char>(bits >> count & 255);
    }
    return bytes;
}

std::string RunLink::of(const std::string& text) {
    std::string packed(text.size() + 1024, '\0'); // enough for text that does not compress
    std::string source = text;
    z_stream stream = {};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, rawDeflate, MAX_MEM_LEVEL,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::bad_alloc();
    }
    stream.next_in = bytesOf(source);
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = bytesOf(packed);
    stream.avail_out = static_cast<uInt>(packed.size());
    const bool done = source.size() <= mostText && deflate(&stream, Z_FINISH) == Z_STREAM_END;
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    const std::string written = toLetters(packed);
    if (!done || written.size() > mostLetters) {
        throw std::runtime_error("the run is too long for a link");
    }
    return std::string(mark) + written;
}

std::string RunLink::textOf(std::string_view link) {
    const std::string_view written = link.substr(link.find(mark) + mark.size());
    if (written.size() > mostLetters) throw std::runtime_error("the link is too long");
    std::string packed = fromLetters(written);
    z_stream stream = {};
    stream.next_in = bytesOf(packed);
    stream.avail_in = static_cast<uInt>(packed.size());
    if (inflateInit2(&stream, rawDeflate) != Z_OK) throw std::bad_alloc();
    std::string text;
    std::string part(4096, '\0'); // most runs are far shorter than the limit
    int result = Z_OK;
    while (result == Z_OK && text.size() <= mostText) {
        stream.next_out = bytesOf(part);
        stream.avail_out = static_cast<uInt>(part.size());
        result = inflate(&stream, Z_NO_FLUSH);
        text.append(part, 0, part.size() - stream.avail_out);
    }
    inflateEnd(&stream);
    if (text.size() > mostText) throw std::runtime_error("the run in the link is too long");
    if (result != Z_STREAM_END || stream.avail_in > 0) {
        throw std::runtime_error("the link is broken");
    }
    return text;
}

InputScript RunLink::read(const std::string& argument) {
    if (!isLink(argument)) return InputScript::fromFile(argument);
    std::istringstream source(textOf(argument));
    InputScript script;
    std::string failure;
    if (!script.read(source, failure)) throw std::runtime_error("the link, " + failure);
    return script;
}
