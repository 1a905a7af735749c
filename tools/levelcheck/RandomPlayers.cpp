// SPDX-License-Identifier: Zlib
#include "tools/levelcheck/RandomPlayers.h"

#include <algorithm>
#include <cstdlib>
#include <random>

#include "tools/levelcheck/Run.h"

static constexpr int framesPerSecond = 66;
static constexpr int winFrames = 40 * framesPerSecond;
static constexpr int playFrames = 600 * framesPerSecond;
static constexpr int stuckFrames = 60 * framesPerSecond;
static constexpr int longestKeys = 40; // frames until other keys are held
static constexpr int pressChance = 10; // frames a press, on average, once it is possible

RandomPlayers::RandomPlayers(const LevelMap& map) {
    for (unsigned seed = 1; seed <= count; ++seed) play(map, seed);
}

void RandomPlayers::play(const LevelMap& map, unsigned seed) {
    std::mt19937 generator(seed);
    const auto random = [&](int end) { // 0 to end - 1
        return static_cast<int>(generator() % static_cast<unsigned>(end));
    };
    Player player(Run::start);
    HeldKeys held;
    int keys = 0; // frames for which they are still held
    int wait = 0, still = 0;
    int column = 0, row = 0; // the cell near which the runner has been for `still` frames
    for (int frame = 0; frame < playFrames; ++frame) {
        if (keys-- == 0) {
            keys = shortestHold - 1 + random(longestKeys - shortestHold + 1);
            const int set = random(4);
            held.left = (set & 1) != 0;
            held.right = (set & 2) != 0;
        }
        if (--wait <= 0 && random(pressChance) == 0) {
            player.requestKick();
            wait = pressGap;
        }
        player.update(held, map);
        if (player.kickSpeed() >= goalSpeed) {
            winners += frame < winFrames ? 1 : 0;
            return;
        }
        const int x = cellOf(player.position().x), y = cellOf(player.position().y);
        if (std::abs(x - column) > 1 || std::abs(y - row) > 1) {
            column = x;
            row = y;
            still = 0;
        } else if (++still == stuckFrames) {
            stuck.add(column, row);
            return;
        }
    }
}
