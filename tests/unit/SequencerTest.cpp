// SPDX-License-Identifier: Zlib
#include <algorithm>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "base/Noise.h"
#include "sound/AudioSingleton.h"
#include "sound/SequencerCursor.h"
#include "tools/Inspector.h"

// --- the clock

class SequencerCursorTest : public testing::Test, public SequencerCursor::Callback {
protected:
    using Event = std::pair<std::int32_t, std::int64_t>; // step; sample since the start of the test

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

TEST_F(SequencerCursorTest, StepsBeginOnTheirSamplesInBuffersOfAnyLength) {
    constexpr std::int64_t firstSteps[] = {0, 5513, 11025, 16537, 22048, 27567};
    constexpr std::int64_t bars[] = {0, 88274, 176547, 264821};
    std::vector<Event> expected;
    for (const std::int32_t frames : {1, 55, 20000}) {
        cursor.rewind();
        passed = 0;
        events.clear();
        while (passed <= bars[3]) process(frames);
        events.resize(3 * 16 + 1);
        for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(events[i].second, firstSteps[i]);
        for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(events[16 * i], Event(0, bars[i]));
        if (expected.empty()) expected = events;
        EXPECT_EQ(events, expected) << "buffers of " << frames;
    }
}

TEST_F(SequencerCursorTest, StartsInStepZeroWithoutAnEvent) {
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

// --- the grid

class GridTest : public testing::Test, public AudioSingleton::Callback {
protected:
    static constexpr std::int32_t bar = 88274; // samples of the first bar
    using Samples = std::vector<float>;

    GridTest() { renew(); }

    void renew() {
        sound = Inspector::makeSound();
        sound->setPitches({220, 247.5f, 275, 330, 371.25f, 412.5f, 110, 55});
        sound->rewindBar();
    }

    void onBar() override {
        ++bars;
        sound->toggleStep(1, 0, bars == 1 ? AudioSingleton::rest : 4);
    }

    Samples process(std::int32_t frames) {
        Samples output(2 * static_cast<std::size_t>(frames));
        sound->process(output.data(), frames);
        return output;
    }

    std::unique_ptr<AudioSingleton> sound;
    int bars = 0;
};

TEST_F(GridTest, ARepeatedNoteBecomesARest) {
    const auto note = [this] { return Inspector::note(*sound, 7, 15); };
    EXPECT_EQ(note(), AudioSingleton::rest);
    const std::pair<std::int32_t, std::int32_t> toggles[] = {{5, 5}, {4, 4},   {4, -1},
                                                             {4, 4}, {-1, -1}, {0, 0}};
    for (const auto& [written, kept] : toggles) {
        sound->toggleStep(7, 15, written);
        EXPECT_EQ(note(), kept);
    }
    sound->clearSteps();
    EXPECT_EQ(note(), AudioSingleton::rest);
}

TEST_F(GridTest, ANoteWrittenInABarEventPlaysInThatBar) {
    sound->setCallback(this);
    EXPECT_EQ(process(bar), Samples(2 * bar)) << "the first bar is empty";
    EXPECT_EQ(Inspector::soundingVoices(*sound, 1), 0);
    process(1);
    EXPECT_EQ(bars, 2);
    EXPECT_EQ(Inspector::soundingVoices(*sound, 1), 1);
    sound->setCallback(nullptr);
    sound->toggleStep(2, 0, 4); // too late for this bar
    process(bar - 2);           // the second bar is a sample shorter
    EXPECT_EQ(Inspector::soundingVoices(*sound, 2), 0);
    process(1);
    EXPECT_EQ(Inspector::soundingVoices(*sound, 2), 1);
    EXPECT_EQ(bars, 2);
}

TEST_F(GridTest, EachBankHasItsPatch) {
    const FilePath folder = FilePath::getDataDirectory().join("synthPatches");
    std::vector<Samples> pieces;
    for (const bool loadsAgain : {false, true}) {
        renew();
        for (std::size_t bank = 0; loadsAgain && bank < AudioSingleton::patchFiles.size(); ++bank) {
            sound->loadPatch(bank, folder.join(AudioSingleton::patchFiles[bank]).text());
        }
        for (std::int32_t track = 0; track < 4; ++track) sound->toggleStep(track, 4 * track, 0);
        sound->playBom();
        pieces.push_back(process(bar));
    }
    EXPECT_TRUE(pieces[0] == pieces[1]);
}

TEST_F(GridTest, ABankDropsItsThirtyThirdNote) {
    for (int thump = 0; thump < 11; ++thump) sound->playBom(); // three notes each
    EXPECT_EQ(Inspector::soundingVoices(*sound, 4), 32);
}

TEST_F(GridTest, APitchedNoteStartsASampleBeforeItsStepExceptAtTheStartOfABuffer) {
    for (const std::int32_t first : {5000, 5512, 5513}) { // where the buffer of step 1 starts
        renew();
        sound->toggleStep(3, 1, 0);
        process(first);
        const Samples output = process(1000);
        std::int32_t silent = 0;
        while (output[2 * static_cast<std::size_t>(silent)] == 0) ++silent;
        // The first sample of the wave is 0, too.
        EXPECT_EQ(silent, std::max(5513 - first - 1, 0) + 1) << first;
    }
}

// The start of a buffer shifts a pitched note that starts there; drums and sounding notes stay.
TEST_F(GridTest, TheLengthOfBuffersChangesNothingThatSounds) {
    Samples expected;
    for (const std::int32_t frames : {6000, 1, 55}) {
        renew();
        noiseSeed() = 1;
        sound->playBom();
        sound->toggleStep(4, 1, 0);
        sound->toggleStep(6, 2, 1);
        Samples piece;
        while (piece.size() < 2 * 24000) {
            const Samples buffer = process(frames);
            piece.insert(piece.end(), buffer.begin(), buffer.end());
        }
        piece.resize(2 * 24000);
        if (expected.empty()) expected = piece;
        EXPECT_TRUE(piece == expected) << "buffers of " << frames;
    }
}
