// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>

#include "game/LevelMap.h"
#include "game/WorldPoint.h"

class Application;
class GamePlay;

// The real application at play in a level of any size, on a stand-in for GL: what its frames cost
// is what the game itself does. The level is one pattern of ledges and flames throughout, and the
// runner begins in it far from all borders, so that the same is to be seen and done whatever the
// size.
class FrameScene {
public:
    FrameScene(std::uint32_t width, std::uint32_t height); // tiles; at least 512 by 1024

    // The runner runs, jumps and lays stars.
    void runFrame();
    void runFrames(int count);

    WorldPoint position() const; // the runner's, tiles

    // The level alone.
    static LevelMap makeLevel(std::uint32_t width, std::uint32_t height);

private:
    static Application& application();

    GamePlay* play = nullptr;
    std::uint32_t frame = 0;
};
