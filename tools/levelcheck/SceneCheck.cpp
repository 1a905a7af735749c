// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/SceneCheck.h"

#include "game/LevelMap.h"
#include "game/Player.h"
#include "tools/levelcheck/PictureChecks.h"

static constexpr WorldPoint start = {60, 944};
static constexpr int earliestLanding = 60; // frames
static constexpr int latestLanding = 120;
static constexpr int watched = 600; // frames; the last text comes in frame 300
static constexpr int calmDown = 60; // frames from the landing until the runner rests

void checkScene(const LoadedImage& picture, Findings& findings) {
    const LevelMap map(picture);
    PictureChecks checks(picture, map, start, findings);
    checks.checkPixels();
    if (!checks.checkStart()) return;

    Player player(start);
    int landing = 0, lastMotion = 0;
    for (int frame = 1; frame <= watched; ++frame) {
        const WorldPoint before = player.position();
        player.update(HeldKeys(), map);
        const WorldPoint behind = player.position();
        if (before.x != behind.x || before.y != behind.y || player.isAirborne()) lastMotion = frame;
        if (landing == 0 && !player.isAirborne()) landing = frame;
    }
    if (landing == 0) {
        findings.error("the runner does not land within " + std::to_string(watched) + " frames");
        return;
    }
    findings.require(landing >= earliestLanding && landing <= latestLanding,
                     "the runner lands in frame " + std::to_string(landing) + " (" +
                         std::to_string(earliestLanding) + " to " + std::to_string(latestLanding) +
                         " wanted)");
    const WorldPoint end = player.position();
    findings.require(lastMotion <= landing + calmDown,
                     lastMotion < watched
                         ? "the runner rests from frame " + std::to_string(lastMotion + 1) +
                               " on in " + placeText(cellOf(end.x), cellOf(end.y))
                         : "the runner never rests");
}
