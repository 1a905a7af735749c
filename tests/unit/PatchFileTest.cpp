// SPDX-License-Identifier: Zlib
#include "sound/PatchFile.h"

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <map>

#include <gtest/gtest.h>

using Values = std::map<std::int32_t, float>;

static const std::string lines22(22, '\n');
static const std::string countLine = "static const int values = 3;\n"; // 3: column 26
static const std::string head = lines22 + countLine + "\n{\n";

// The values of a file for a voice with three parameters. A refused file gives {-1, 0}.
static Values read(const std::string& bytes) {
    const std::string path = testing::TempDir() + "PatchFileTest." + std::to_string(getpid());
    std::ofstream(path, std::ios::binary) << bytes;
    testing::internal::CaptureStdout();
    const PatchFile file(path, 3);
    const std::string printed = testing::internal::GetCapturedStdout();
    std::remove(path.c_str());
    Values values;
    for (const auto& [index, number] : file.getValues()) values[index] = number;
    if (printed == "PolyphonicSynth: Number of parameters in file does not match synth's number of "
                   "parameters.\n") {
        values[-1] = 0;
    }
    return values;
}

TEST(PatchFile, ReadsOneValueALine) {
    const Values expected = {{0, 0.5f}, {1, -1.25f}, {2, 1e-3f}};
    EXPECT_EQ(read(head + "0.5f,\n-1.25f,\n1e-3f,\n};\n9f,\n"), expected);
    EXPECT_EQ(read(head + " 0.5, \n-1.25};\r\n1e-3  // a word\n}"), expected);
    EXPECT_EQ(read(head + "0.5f,\n-1.25f,\n1e-3f,"), expected) << "no } and no line feed";
    EXPECT_EQ(read(head + "}"), Values()) << "fewer values than parameters";
    EXPECT_EQ(read(lines22 + std::string(25, ' ') + "13;\n\n{\n1f,\n"), Values({{0, 1.0f}}))
        << "the count starts in column 26";
    for (const std::string& line :
         {std::string(), std::string("1"), std::string("f,"), std::string("nanf,"),
          std::string("-inff,"), std::string("1e39f,"), std::string(" };"), std::string(4, '\0'),
          std::string(1 << 15, 'x')}) {
        EXPECT_EQ(read(head + "1f,\n" + line + "\n3f,\n};\n"), Values({{0, 1.0f}, {2, 3.0f}}))
            << line.substr(0, 100);
    }
    EXPECT_EQ(read(head + "1f,\n" + std::string(1 << 16, ' ') + "\n3f,\n"), Values({{0, 1.0f}}));
    EXPECT_EQ(read(head + std::string(3000, '\n') + "1f,\n"), Values()) << "too many lines";
}

TEST(PatchFile, RefusesAWrongCount) {
    const std::string values = "\n{\n1f,\n2f,\n3f,\n};\n";
    for (const std::string& start : {std::string(), lines22, '\n' + lines22 + countLine,
                                     lines22.substr(1) + countLine, std::string(1 << 20, 'x')}) {
        EXPECT_EQ(read(start + values), Values({{-1, 0.0f}})) << start.substr(0, 100);
    }
    for (const char* count : {"", "3", "2;", "33;", "-3;", "three;", "99999999999999999999;"}) {
        EXPECT_EQ(read(lines22 + std::string(26, ' ') + count + values), Values({{-1, 0.0f}}));
    }
}
