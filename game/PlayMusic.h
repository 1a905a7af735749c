// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstdint>

class AudioSingleton;

// The music of the play: a fixed bass line, a pad that walks through eight notes, one a bar, and a
// high voice that plays a new random figure each bar while the runner is fast. Owned by the playing
// screen; each operation names its thread.
class PlayMusic {
public:
    // Writes the bass line and starts a bar. Main thread, before the first bar event.
    void start(AudioSingleton& sound);

    // Writes the notes of a new bar; the runner's speed is in tiles per frame. Audio thread.
    void onBar(AudioSingleton& sound, float speed);

private:
    std::int32_t barCount = -2; // -1 in the first bar, then 0 to 7 in turn
    std::array<std::int32_t, 8> padLine = {4, 5, 3, 2, 4, 5, 3, 6}; // never one note twice running
};
