// SPDX-License-Identifier: Zlib
#include "sound/PitchFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "base/Noise.h"

class PitchFileTest : public testing::Test {
protected:
    PitchFileTest() {
        // No dot in the path: a folder's dot counts for an extension.
        std::string pattern = testing::TempDir() + "PitchFileTestXXXXXX";
        folder = mkdtemp(pattern.data());
    }

    ~PitchFileTest() override { std::filesystem::remove_all(folder); }

    std::string write(const std::string& bytes, const std::string& name = "tune.txt") const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return folder / name;
    }

    PitchTable read(const std::string& bytes) const { return readPitches(write(bytes)); }

    std::filesystem::path folder;
};

static constexpr PitchTable eight = {110, 120, 130, 140, 150, 160, 170, 180};
static constexpr PitchTable none = {};
static constexpr const char* lines = "220\n240\n260\n280\n300\n320\n340\n360";

TEST_F(PitchFileTest, EachLineIsTwiceAPitch) {
    EXPECT_EQ(read(lines), eight);
    EXPECT_EQ(read(lines + std::string("\n")), eight) << "with a line feed at the end";
    EXPECT_EQ(read(lines + std::string("\n380\n400\n")), eight) << "with more than eight";
    EXPECT_EQ(read("220 hertz\r\n  240\r\n+260,5\r\n2.8e2\r\n300.0x\r\n320\t1\r\n340\r\n360\r\n"),
              eight);
    EXPECT_EQ(read("220\n-240"), (PitchTable{110, -120}));
    EXPECT_EQ(read("0.1")[0], 0.05f) << "rounded once";
}

TEST_F(PitchFileTest, ALineWithoutANumberIsSilence) {
    for (const std::string& line :
         {std::string(), std::string("x 240"), std::string("nan"), std::string("-inf"),
          std::string("1e39"), std::string("\0", 1), std::string("."), std::string(1 << 20, 'x')}) {
        EXPECT_EQ(read("220\n" + line + "\n260\n"), (PitchTable{110, 0, 130}))
            << line.substr(0, 100);
    }
}

TEST_F(PitchFileTest, Of255CharactersIsTheRestOfALineDropped) {
    EXPECT_EQ(read(std::string(252, ' ') + "220\n240\n"), (PitchTable{110, 120}));
    EXPECT_EQ(read(std::string(253, ' ') + "220\n240\n"), (PitchTable{11, 120}));
    EXPECT_EQ(read(std::string(255, ' ') + "220\n240\n"), (PitchTable{0, 120}));
    EXPECT_EQ(read("220" + std::string(1 << 20, ' ')), (PitchTable{110})) << "a megabyte";
}

TEST_F(PitchFileTest, WhatCannotBeReadIsSilence) {
    EXPECT_EQ(readPitches(folder / "missing.txt"), none);
    EXPECT_EQ(readPitches(folder), none);
    EXPECT_EQ(readPitches(""), none);
    EXPECT_EQ(readPitches("/dev/null"), none);
    EXPECT_EQ(read(""), none);
    EXPECT_EQ(read("\x7f"
                   "ELF\xff\xfe\n\xff\n"),
              none);
}

TEST_F(PitchFileTest, OneEntryIsPickedAndNoOtherIsTried) {
    std::ostringstream printed; // nothing
    std::streambuf* const coutBuffer = std::cout.rdbuf(printed.rdbuf());
    EXPECT_EQ(pickPitches(FilePath(folder / "missing")), none);
    EXPECT_EQ(pickPitches(FilePath(folder)), none);
    const std::string path = write(lines);
    EXPECT_EQ(pickPitches(FilePath(folder)), eight);
    for (const char* other : {"tune.TXT", "tune.txt~", "txt", "tune"}) {
        std::filesystem::remove(path);
        write(lines, other);
        EXPECT_EQ(pickPitches(FilePath(folder)), none) << other;
        write(lines);
        std::set<PitchTable> picked;
        for (int i = 0; i < 100; ++i) picked.insert(pickPitches(FilePath(folder)));
        EXPECT_EQ(picked, (std::set<PitchTable>{none, eight})) << other;
        std::filesystem::remove(folder / other);
    }
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(pickPitches(FilePath(folder)), none) << "a folder of that name";
    std::filesystem::remove(path);
    std::filesystem::create_symlink("nowhere.txt", path);
    EXPECT_EQ(pickPitches(FilePath(folder)), none) << "a link to nothing";
    std::cout.rdbuf(coutBuffer);
    EXPECT_EQ(printed.str(), "");
}

TEST_F(PitchFileTest, AllEntriesArePicked) {
    std::set<PitchTable> written;
    for (int i = 1; i <= 5; ++i) {
        write(std::to_string(200 * i), std::to_string(i) + ".txt");
        written.insert({static_cast<float>(100 * i)});
    }
    noiseSeed() = 1;
    std::set<PitchTable> picked;
    for (int i = 0; i < 200; ++i) picked.insert(pickPitches(FilePath(folder)));
    EXPECT_EQ(picked, written);
    EXPECT_EQ(noiseSeed(), 201u) << "one number each";
}
