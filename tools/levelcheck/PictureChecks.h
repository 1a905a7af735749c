// SPDX-License-Identifier: Zlib
#pragma once

#include "drawing/LoadedImage.h"
#include "game/LevelMap.h"
#include "game/WorldPoint.h"
#include "tools/levelcheck/Findings.h"

// What can be said of a level's picture without playing.
class PictureChecks {
public:
    // `start` is the cell in which the runner begins.
    PictureChecks(const LoadedImage& level, const LevelMap& itsMap, WorldPoint start,
                  Findings& target)
        : picture(level), map(itsMap), column(cellOf(start.x)), row(cellOf(start.y)),
          findings(target) {}

    // Pixels that are not what they look like.
    void checkPixels();

    // False if the runner cannot begin.
    bool checkStart();

    // The ground below the start as a play wants it.
    void checkGround();

private:
    const LoadedImage& picture;
    const LevelMap& map;
    int column;
    int row;
    Findings& findings;
};
