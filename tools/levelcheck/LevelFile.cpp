// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/LevelFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "base/FilePath.h"
#include "drawing/ImageLoader.h"

static constexpr std::uint64_t mostTiles = 1 << 26;
static constexpr std::uint32_t longestSide = 65535; // pixels that the game reads

// What the head of a PNG file says.
struct PngHead {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int colourType = 0;
};

static constexpr int greyType = 0;
static constexpr int paletteType = 3;
static constexpr int greyAlphaType = 4;

static std::optional<PngHead> readHead(const std::string& path) {
    constexpr std::array<unsigned char, 16> expected = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n',
                                                        0,    0,   0,   13,  'I',  'H',  'D',  'R'};
    std::array<unsigned char, 26> bytes{};
    std::ifstream file = FilePath(path).open();
    if (!file.read(reinterpret_cast<char*>(bytes.data()), bytes.size())) return std::nullopt;
    if (!std::equal(expected.begin(), expected.end(), bytes.begin())) return std::nullopt;
    const auto number = [&](std::size_t at) {
        return static_cast<std::uint32_t>(bytes[at]) << 24 |
               static_cast<std::uint32_t>(bytes[at + 1]) << 16 |
               static_cast<std::uint32_t>(bytes[at + 2]) << 8 | bytes[at + 3];
    };
    return PngHead{number(16), number(20), bytes[25]};
}

LevelFile::LevelFile(const std::string& path) {
    const FilePath file(path);
    if (!file.isFile()) throw Unreadable("no file " + path);
    if (!file.isOrdinaryFile()) throw Unreadable(path + " is a pipe or a device");
    const std::optional<PngHead> head = readHead(path);
    if (!head) throw Unreadable(path + " is no PNG picture");
    if (std::max(head->width, head->height) > longestSide) {
        fault = "the picture is too large for the game: no side may be longer than " +
                std::to_string(longestSide);
        return;
    }
    if (std::uint64_t{head->width} * head->height > mostTiles) {
        fault = "the picture is too large to be checked";
        return;
    }
    picture = ImageLoader().loadFromFile(path);
    if (picture.pixels) return;
    const std::string advice = ", which the game cannot read: save it as RGB, 8 bits a channel";
    if (head->colourType == paletteType) {
        fault = "the picture is saved with a palette" + advice;
    } else if (head->colourType == greyType || head->colourType == greyAlphaType) {
        fault = "the picture is saved as grey" + advice;
    } else {
        throw Unreadable(path + " cannot be decoded");
    }
}
