// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/LevelFile.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>

#include "base/FilePath.h"
#include "drawing/ImageLoader.h"

static constexpr std::uint64_t mostTiles = 1 << 26;
static constexpr std::uint32_t longestSide = 65535; // pixels that the game reads

// The width and the height that the head of a PNG file gives, before anything is decoded.
static std::pair<std::uint32_t, std::uint32_t> readSize(const std::string& path) {
    const FilePath file(path);
    if (!file.isFile()) throw std::runtime_error("no such file: " + path);
    if (!file.isOrdinaryFile()) throw std::runtime_error(path + " is a pipe or a device");
    const std::string expected("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16);
    std::string head(24, '\0');
    if (!file.open().read(head.data(), 24) || head.compare(0, 16, expected) != 0) {
        throw std::runtime_error(path + " is not a PNG picture");
    }
    const auto number = [&](std::size_t first) {
        std::uint32_t value = 0;
        for (std::size_t i = first; i < first + 4; ++i) {
            value = value << 8 | static_cast<unsigned char>(head[i]);
        }
        return value;
    };
    return {number(16), number(20)};
}

LoadedImage loadLevel(const std::string& path, Findings& findings) {
    const auto [width, height] = readSize(path);
    if (std::max(width, height) > longestSide || std::uint64_t{width} * height > mostTiles) {
        findings.error("the picture is too large: at most " + std::to_string(longestSide) +
                       " pixels a side, " + std::to_string(mostTiles) + " in all");
        return {};
    }
    LoadedImage picture = ImageLoader().loadFromFile(path);
    if (!picture.pixels) {
        findings.error("the game cannot read the picture: it is damaged, grey or has a palette; "
                       "save it as RGB, 8 bits a channel");
    }
    return picture;
}

bool checkPicture(const LoadedImage& picture, const LevelMap& map, WorldPoint start,
                  const Zones& zones, Findings& findings) {
    static constexpr std::uint8_t codes[] = {0x00, 0x20, 0x40, 0x60, 0x80, 0xFE, 0xE0, 0xFF};
    Places unknown, coloured;
    const std::uint8_t* pixel = picture.pixels.get();
    for (int y = 0; y < static_cast<int>(picture.height); ++y) {
        for (int x = 0; x < static_cast<int>(picture.width); ++x, pixel += 4) {
            if (std::find(std::begin(codes), std::end(codes), *pixel) == std::end(codes)) {
                unknown.add(x, y);
            }
            if (pixel[0] != pixel[1] || pixel[0] != pixel[2]) coloured.add(x, y);
        }
    }
    findings.addPlaces(Findings::Kind::note, zones, unknown,
                       "unknown tile codes, drawn like 0x20, near ");
    findings.addPlaces(Findings::Kind::note, zones, coloured,
                       "pixels that are not grey, of which only the red counts, near ");
    const int column = cellOf(start.x), row = cellOf(start.y);
    if (!map.contains(column, row)) {
        findings.error("the picture is too small to contain the start, " + placeText(column, row));
        return false;
    }
    if (map.at(column, row) != LevelMap::empty) {
        findings.error("the start is not empty: " + placeText(column, row));
        return false;
    }
    return true;
}
