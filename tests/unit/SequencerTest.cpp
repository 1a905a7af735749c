// SPDX-License-Identifier: Zlib
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "sound/AudioSingleton.h"
#include "sound/SequencerCursor.h"
#include "tools/Inspector.h"

// What SoundGoldenTest does not cover.
class SequencerTest : public testing::Test, public SequencerCursor::Callback {
protected:
    using Event = std::pair<std::int32_t, std::int64_t>; // step; sample since the start of the test

    SequencerTest() { cursor.setCallback(this); }

    void stepReached(std::int32_t step, std::int32_t sampleOffset) override {
        events.push_back({step, passed + sampleOffset});
    }

    void process(std::int32_t frames) {
        cursor.process(frames);
        passed += frames;
    }

    SequencerCursor cursor;
    std::vector<Event> events;
    std::int64_t passed = 0;
};

TEST_F(SequencerTest, StartsInStepZeroWithoutAnEvent) {
    process(8000);
    cursor.rewind();
    process(1);
    cursor.rewind();
    process(1);
    cursor.setCallback(nullptr); // the clock goes on
    process(30000);
    cursor.setCallback(this);
    process(5000);
    EXPECT_EQ(events, (std::vector<Event>{{1, 5512}, {0, 8000}, {0, 8001}, {6, 41087}}));
}

TEST_F(SequencerTest, ABankDropsItsThirtyThirdNote) {
    const std::unique_ptr<AudioSingleton> sound = Inspector::makeSound();
    for (int thump = 0; thump < 11; ++thump) sound->playBom(); // three notes each
    EXPECT_EQ(Inspector::soundingVoices(*sound, 4), 32);
}
