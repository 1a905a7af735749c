// SPDX-License-Identifier: Zlib
#include "sound/PitchFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include <gtest/gtest.h>

#include "base/Noise.h"

static constexpr PitchTable eight = {110, 120, 130, 140, 150, 160, 170, 180};
static constexpr PitchTable none = {};
static const std::string lines = "220\n240\n260\n280\n300\n320\n340\n360";

class PitchFileTest : public testing::Test {
protected:
    PitchFileTest() {
        // Without a dot: the text after the last dot of a path counts as the extension.
        std::string pattern = testing::TempDir() + "PitchFileTestXXXXXX";
        folder = mkdtemp(pattern.data());
    }

    ~PitchFileTest() override { std::filesystem::remove_all(folder); }

    PitchTable read(const std::string& bytes, const std::string& name = "tune.txt") const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return readPitches(folder / name);
    }

    std::set<PitchTable> pickOften() const {
        std::set<PitchTable> picked;
        for (int i = 0; i < 200; ++i) picked.insert(pickPitches(FilePath(folder)));
        return picked;
    }

    std::filesystem::path folder;
};

TEST_F(PitchFileTest, ReadsTwiceThePitchOnEachLine) {
    EXPECT_EQ(read(lines + "\n380\n400\n"), eight) << "more than eight";
    EXPECT_EQ(read("220 hertz\r\n  240\r\n+260,5\r\n2.8e2\r\n300.0x\r\n320\t1\r\n340\r\n360"),
              eight);
    for (const std::string& line :
         {std::string(), std::string("x 240"), std::string("nan"), std::string("1e39"),
          std::string("\0", 1), std::string(1 << 15, 'x')}) {
        EXPECT_EQ(read("220\n" + line + "\n-260\n"), (PitchTable{110, 0, -130}))
            << line.substr(0, 100);
    }
    EXPECT_EQ(readPitches(folder), none);
    EXPECT_EQ(read(std::string(253, ' ') + "220\n240\n"), (PitchTable{11, 120}));
    EXPECT_EQ(read("220\n" + std::string(1 << 16, ' ') + "\n240\n"), (PitchTable{110}));
}

TEST_F(PitchFileTest, PicksEveryEntryAndPlaysTextFilesOnly) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(pickPitches(FilePath(folder / "missing")), none);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(pickOften(), std::set<PitchTable>{none}) << "an empty folder";
    std::set<PitchTable> written;
    for (int i = 1; i <= 3; ++i) {
        written.insert(read(std::to_string(200 * i), std::to_string(i) + ".txt"));
    }
    noiseSeed() = 1;
    EXPECT_EQ(pickOften(), written);
    EXPECT_EQ(noiseSeed(), 201u) << "one random number each";
    written.insert(none);
    for (const char* other : {"tune.TXT", "tune.txt~", "txt"}) {
        read(lines, other);
        EXPECT_EQ(pickOften(), written) << other;
        std::filesystem::remove(folder / other);
    }
}
