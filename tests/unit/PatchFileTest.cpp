// SPDX-License-Identifier: Zlib
#include "sound/PatchFile.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

static constexpr const char* countLine = "static const int values = 3;\n"; // 3: column 26
static const std::string lines22(22, '\n');
static const std::string head = lines22 + countLine + "\n{\n";

class PatchFileTest : public testing::Test {
protected:
    using Values = std::map<std::int32_t, float>;

    PatchFileTest() {
        std::string pattern = testing::TempDir() + "PatchFileTest.XXXXXX";
        folder = mkdtemp(pattern.data());
        coutBuffer = std::cout.rdbuf(printed.rdbuf());
    }

    ~PatchFileTest() override {
        std::cout.rdbuf(coutBuffer);
        std::filesystem::remove_all(folder);
    }

    // The values of a file for a voice with three parameters.
    Values readPath(const std::string& path) {
        printed.str("");
        Values values;
        const PatchFile file(path, 3);
        for (const auto& [index, number] : file.getValues()) values[index] = number;
        return values;
    }

    Values read(const std::string& bytes) {
        std::ofstream(folder / "patch.inl", std::ios::binary) << bytes;
        return readPath(folder / "patch.inl");
    }

    std::filesystem::path folder;
    std::ostringstream printed;
    std::streambuf* coutBuffer;
};

TEST_F(PatchFileTest, ReadsOneValueALine) {
    const Values expected = {{0, 0.5f}, {1, -1.25f}, {2, 1e-3f}};
    EXPECT_EQ(read(head + "0.5f,\n-1.25f,\n1e-3f,\n};\n9f,\n"), expected);
    EXPECT_EQ(read(head + " 0.5, \n-1.25};\n1e-3  // a word\n}"), expected);
    EXPECT_EQ(read(head + "0.5f,\n-1.25f,\n1e-3f,"), expected) << "no } and no line feed";
    EXPECT_EQ(read(head + "}"), Values()) << "fewer values than parameters";
    EXPECT_EQ(read(lines22 + std::string(25, ' ') + "13;\n\n{\n1f,\n"), Values({{0, 1.0f}}))
        << "the count starts in column 26";
    EXPECT_EQ(printed.str(), "");
    std::string windows;
    for (const char c : head + "1,\n2,\n3,\n};\n") windows += c == '\n' ? "\r\n" : std::string{c};
    EXPECT_EQ(read(windows), Values({{0, 1.0f}, {1, 2.0f}, {2, 3.0f}}));
}

TEST_F(PatchFileTest, RefusesAWrongCountAndPrintsALine) {
    const std::string values = "\n{\n1f,\n2f,\n3f,\n};\n";
    std::vector<std::string> refused = {"", lines22, '\n' + lines22 + countLine + values,
                                        std::string(21, '\n') + countLine + values,
                                        std::string(1 << 20, 'x')};
    for (const char* count : {"", "3", "2;", "33;", "-3;", "three;", "99999999999999999999;"}) {
        refused.push_back(lines22 + std::string(26, ' ') + count + values);
    }
    for (const std::string& bytes : refused) {
        EXPECT_EQ(read(bytes), Values()) << bytes.substr(0, 100);
        EXPECT_EQ(printed.str(), "PolyphonicSynth: Number of parameters in file does not match "
                                 "synth's number of parameters.\n");
    }
    for (const std::string& path : {folder.string(), (folder / "missing").string()}) {
        EXPECT_EQ(readPath(path), Values()) << path;
        EXPECT_NE(printed.str(), "") << path;
    }
}

TEST_F(PatchFileTest, SkipsAndCountsALineWithoutANumber) {
    for (const std::string& line :
         {std::string(), std::string("1"), std::string("f,"), std::string("nanf,"),
          std::string("-inff,"), std::string("1e39f,"), std::string(" };"), std::string(4, '\0'),
          std::string(1 << 15, 'x')}) {
        EXPECT_EQ(read(head + "1f,\n" + line + "\n3f,\n};\n"), Values({{0, 1.0f}, {2, 3.0f}}))
            << line.substr(0, 100);
    }
}

TEST_F(PatchFileTest, ReadsNoEndlessFile) {
    EXPECT_EQ(read(head + "1f,\n" + std::string(1 << 16, ' ') + "\n3f,\n"), Values({{0, 1.0f}}));
    std::string lines = head;
    for (int i = 0; i < 100000; ++i) lines += "1f,\n";
    EXPECT_LE(read(lines).size(), 1000u);
}
