// SPDX-License-Identifier: Zlib
#pragma once

#include <array>
#include <cstdint>

class AudioSingleton;

// The music of the play, apart from its window: a fixed bass line, a pad that walks through eight
// notes, a bar each, and a high voice that plays a fresh random figure each bar while the runner is
// fast. Who plays owns it and calls its operations, on the thread that each names.
class PlayMusic {
public:
    // Writes the bass line and goes to the begin of a bar. Main thread, before the bar events.
    void start(AudioSingleton& sound);

    // What a new bar brings, for a runner of that speed in tiles per frame. Audio thread.
    void onBar(AudioSingleton& sound, float speed);

private:
    std::int32_t barCount = -2; // bars begun, modulo 8 from the second on
    std::array<std::int32_t, 8> padLine = {4, 5, 3, 2, 4, 5, 3, 6}; // no two neighbours are equal
};
