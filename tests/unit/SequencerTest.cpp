// SPDX-License-Identifier: Zlib
#include <algorithm>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "base/Noise.h"
#include "sound/AudioSingleton.h"
#include "sound/SequencerCursor.h"
#include "tools/Inspector.h"

// --- the clock

class SequencerCursorTest : public testing::Test, public SequencerCursor::Callback {
protected:
    struct Event {
        std::int32_t step;
        std::int64_t sample; // from the begin of the test
        bool operator==(const Event&) const = default;
    };

    SequencerCursorTest() { cursor.setCallback(this); }

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

TEST_F(SequencerCursorTest, StepsFallOnTheirSamplesWhateverTheBuffers) {
    constexpr std::int64_t firstSteps[] = {0, 5513, 11025, 16537, 22048, 27567};
    constexpr std::int64_t bars[] = {0, 88274, 176547, 264821};
    std::vector<Event> single;
    for (const std::int32_t frames : {1, 16, 55, 256, 512, 20000}) {
        cursor = {};
        cursor.setCallback(this);
        cursor.rewind();
        passed = 0;
        events.clear();
        while (passed <= bars[3]) process(frames);
        events.resize(3 * 16 + 1);
        for (std::size_t i = 0; i < events.size(); ++i) {
            EXPECT_EQ(events[i].step, static_cast<std::int32_t>(i % 16));
        }
        for (std::size_t i = 0; i < std::size(firstSteps); ++i) {
            EXPECT_EQ(events[i].sample, firstSteps[i]);
        }
        for (std::size_t i = 0; i < std::size(bars); ++i) {
            EXPECT_EQ(events[16 * i].sample, bars[i]);
        }
        if (frames == 1) single = events;
        EXPECT_EQ(events, single) << "buffers of " << frames;
    }
}

TEST_F(SequencerCursorTest, BeginsInStepZeroWithoutReportingIt) {
    process(8000);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].step, 1);
    process(0);
    EXPECT_EQ(events.size(), 1u);
    cursor.rewind(); // from anywhere, and again and again
    process(1);
    cursor.rewind();
    process(1);
    EXPECT_EQ(events[1], (Event{0, 8000}));
    EXPECT_EQ(events[2], (Event{0, 8001}));
}

TEST_F(SequencerCursorTest, GoesOnThoughNobodyListens) {
    cursor.setCallback(nullptr);
    process(30000);
    cursor.setCallback(this);
    process(5512);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].step, 6);
}

// --- the grid

class GridTest : public testing::Test, public AudioSingleton::Callback {
protected:
    static constexpr std::int32_t bar = 88274; // samples, the first one

    GridTest() {
        sound->setPitches({220, 247.5f, 275, 330, 371.25f, 412.5f, 110, 55});
        sound->clearSteps();
        sound->rewindBar();
    }

    void onBar() override {
        ++bars;
        if (writes) sound->toggleStep(1, 0, 4);
    }

    std::vector<float> process(std::int32_t frames) {
        std::vector<float> output(2 * static_cast<std::size_t>(frames));
        sound->process(output.data(), frames);
        return output;
    }

    static bool isSilent(const std::vector<float>& output) {
        return std::all_of(output.begin(), output.end(), [](float value) { return value == 0; });
    }

    std::unique_ptr<AudioSingleton> sound = Inspector::makeSound();
    bool writes = false;
    int bars = 0;
};

TEST_F(GridTest, ARepeatedNoteTakesItselfOut) {
    const auto note = [this] { return Inspector::note(*sound, 7, 15); };
    EXPECT_EQ(note(), AudioSingleton::rest);
    const std::pair<std::int32_t, std::int32_t> toggles[] = {{5, 5},   {4, 4},   {4, -1}, {4, 4},
                                                             {-1, -1}, {-1, -1}, {0, 0}};
    for (const auto& [written, kept] : toggles) {
        sound->toggleStep(7, 15, written);
        EXPECT_EQ(note(), kept);
    }
    sound->clearSteps();
    EXPECT_EQ(note(), AudioSingleton::rest);
}

TEST_F(GridTest, AnEmptyGridIsSilentAndTheClockGoesOn) {
    sound->setCallback(this);
    EXPECT_TRUE(isSilent(process(bar)));
    EXPECT_EQ(bars, 1);
    EXPECT_TRUE(isSilent(process(1)));
    EXPECT_EQ(bars, 2);
    sound->setCallback(nullptr);
    process(bar);
    EXPECT_EQ(bars, 2);
}

TEST_F(GridTest, ANoteOfTheBarEventSoundsInThatBar) {
    writes = true;
    sound->setCallback(this);
    process(1);
    EXPECT_EQ(bars, 1);
    EXPECT_EQ(Inspector::soundingVoices(*sound, 1), 1);
    sound->setCallback(nullptr);
    sound->toggleStep(2, 0, 4); // from now on in the next bar
    process(bar - 1);
    EXPECT_EQ(Inspector::soundingVoices(*sound, 2), 0);
    process(1);
    EXPECT_EQ(Inspector::soundingVoices(*sound, 2), 1);
}

TEST_F(GridTest, APitchedNoteBeginsASampleBeforeItsStepUnlessThatIsTheBuffersFirst) {
    for (const std::int32_t first : {5000, 5512, 5513}) { // of the buffer with step 1
        sound = Inspector::makeSound();
        sound->setPitches({220, 220, 220, 220, 220, 220, 220, 220});
        sound->toggleStep(3, 1, 0);
        sound->rewindBar();
        process(first);
        const std::vector<float> output = process(1000);
        // Its first sample is a wave's at its very beginning, which is 0.
        std::size_t silent = 0;
        while (output[2 * silent] == 0) ++silent;
        EXPECT_EQ(static_cast<std::int32_t>(silent), std::max(5513 - first - 1, 0) + 1) << first;
    }
}

// Where a buffer begins moves the start of a pitched note, but no drum and nothing that sounds.
TEST_F(GridTest, SplittingABufferChangesNothingThatSounds) {
    std::vector<std::vector<float>> pieces;
    for (const std::int32_t frames : {6000, 1, 16, 55, 500}) {
        sound = Inspector::makeSound();
        noiseSeed() = 1;
        sound->playBom();
        sound->toggleStep(4, 1, 0);
        sound->toggleStep(6, 2, 1);
        sound->rewindBar();
        std::vector<float> piece;
        while (piece.size() < 2 * 24000) {
            const std::vector<float> buffer = process(frames);
            piece.insert(piece.end(), buffer.begin(), buffer.end());
        }
        piece.resize(2 * 24000);
        pieces.push_back(piece);
        EXPECT_TRUE(pieces.back() == pieces.front()) << "buffers of " << frames;
    }
}
