// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

// A PNG file made by hand, for tests that need one of every kind: 8 bits a sample, nothing
// compressed, so a picture of at most 65535 bytes.
class PngBytes {
public:
    enum Colour : std::uint8_t { grey = 0, rgb = 2, palette = 3, greyAlpha = 4, rgba = 6 };

    // The samples of the rows from the top, packed tight; the length decides the height. Palette
    // entries are red, green, blue; transparency is a byte for each of the first entries.
    static Bytes file(Colour colour, std::uint32_t width, const Bytes& samples,
                      const Bytes& paletteEntries = {}, const Bytes& transparency = {}) {
        const std::size_t samplesOf[] = {1, 0, 3, 1, 2, 0, 4};
        const std::size_t rowBytes = width * samplesOf[colour];
        const auto height = static_cast<std::uint32_t>(samples.size() / rowBytes);
        Bytes bytes = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
        Bytes header;
        append(header, width);
        append(header, height);
        header.insert(header.end(), {8, colour, 0, 0, 0});
        appendChunk(bytes, "IHDR", header);
        if (!paletteEntries.empty()) appendChunk(bytes, "PLTE", paletteEntries);
        if (!transparency.empty()) appendChunk(bytes, "tRNS", transparency);
        Bytes rows;
        for (std::size_t i = 0; i < samples.size(); ++i) {
            if (i % rowBytes == 0) rows.push_back(0); // this row is stored as it is
            rows.push_back(samples[i]);
        }
        appendChunk(bytes, "IDAT", stored(rows));
        appendChunk(bytes, "IEND", {});
        return bytes;
    }

private:
    static void append(Bytes& bytes, std::uint32_t number) { // big end first
        for (int shift = 24; shift >= 0; shift -= 8) {
            bytes.push_back(static_cast<std::uint8_t>(number >> shift));
        }
    }

    static void appendChunk(Bytes& bytes, const std::string& name, const Bytes& content) {
        append(bytes, static_cast<std::uint32_t>(content.size()));
        const auto start = static_cast<std::ptrdiff_t>(bytes.size());
        bytes.insert(bytes.end(), name.begin(), name.end());
        bytes.insert(bytes.end(), content.begin(), content.end());
        std::uint32_t check = 0xFFFFFFFF; // CRC-32 of name and content
        for (auto byte = bytes.begin() + start; byte != bytes.end(); ++byte) {
            check ^= *byte;
            for (int bit = 0; bit < 8; ++bit) check = check >> 1 ^ (check & 1 ? 0xEDB88320 : 0);
        }
        append(bytes, ~check);
    }

    // A zlib stream of one block without compression.
    static Bytes stored(const Bytes& rows) {
        const auto low = static_cast<std::uint8_t>(rows.size());
        const auto high = static_cast<std::uint8_t>(rows.size() >> 8);
        Bytes stream = {0x78, 1, 1, low, high};
        stream.push_back(static_cast<std::uint8_t>(~low));
        stream.push_back(static_cast<std::uint8_t>(~high));
        stream.insert(stream.end(), rows.begin(), rows.end());
        std::uint32_t sum = 1, sumOfSums = 0; // Adler-32
        for (const std::uint8_t byte : rows) {
            sum = (sum + byte) % 65521;
            sumOfSums = (sumOfSums + sum) % 65521;
        }
        append(stream, sumOfSums << 16 | sum);
        return stream;
    }
};
