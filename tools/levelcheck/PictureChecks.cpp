// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/PictureChecks.h"

#include <algorithm>
#include <cstdio>

#include "tools/levelcheck/RunnerState.h"

static constexpr int wantedDrop = 3;  // rows between the start and the ground
static constexpr int wantedFlat = 20; // columns to both sides
static constexpr int namedPlaces = 3; // of many equal ones

static constexpr int cloudColumns = 1400; // the game's clouds end about there
static constexpr int cloudRows = 1280;

// Counts places and names the first.
struct PlaceList {
    std::size_t count = 0;
    std::string names;

    void add(int column, int row, const std::string& what = "") {
        if (count++ >= namedPlaces) return;
        names += (names.empty() ? "" : "; ") + what + placeText(column, row);
    }
    std::string text() const {
        const std::string more = count > namedPlaces ? "; and more" : "";
        return std::to_string(count) + " (" + names + more + ")";
    }
};

static bool isKnownCode(int code) {
    constexpr int codes[] = {0x00, 0x20, 0x40, 0x60, 0x80, 0xFE, 0xE0, 0xFF};
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

static std::string codeText(int code) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%02X", static_cast<unsigned>(code));
    return text;
}

void PictureChecks::checkPixels() {
    PlaceList unknown, coloured;
    const std::uint8_t* pixel = picture.pixels.get();
    for (int y = 0; y < static_cast<int>(picture.height); ++y) {
        for (int x = 0; x < static_cast<int>(picture.width); ++x, pixel += 4) {
            if (!isKnownCode(pixel[0])) unknown.add(x, y, codeText(pixel[0]) + " in ");
            if (pixel[0] != pixel[1] || pixel[0] != pixel[2]) coloured.add(x, y);
        }
    }
    if (unknown.count > 0) {
        findings.note("pixels with a code of no tile, which look like 0x20: " + unknown.text());
    }
    if (coloured.count > 0) {
        findings.note("pixels that are not grey, of which only the red counts: " + coloured.text());
    }
}

bool PictureChecks::checkStart() {
    if (!map.contains(column, row)) {
        findings.error("the picture is too small for the start, which is in " +
                       placeText(column, row));
        return false;
    }
    if (map.at(column, row) != LevelMap::empty) {
        findings.error("the start is not free: " + placeText(column, row));
        return false;
    }
    return true;
}

void PictureChecks::checkGround() {
    if (map.contains(cloudColumns, 0) || map.contains(0, cloudRows)) {
        findings.note("no clouds are seen beyond about " + placeText(cloudColumns, cloudRows));
    }
    int ground = row + 1;
    while (map.at(column, ground) == LevelMap::empty) ++ground;
    const int drop = ground - row - 1;
    if (drop != wantedDrop) {
        findings.note("the ground below the start is in row " + std::to_string(ground) + ", " +
                      std::to_string(drop) + " rows below it and not " +
                      std::to_string(wantedDrop));
    }
    for (int x = column - wantedFlat; x <= column + wantedFlat; ++x) {
        if (RunnerState::isFloor(map, x, ground - 1)) continue;
        findings.note("the ground beside the start is not flat for " + std::to_string(wantedFlat) +
                      " tiles to each side: " + placeText(x, ground));
        return;
    }
}
