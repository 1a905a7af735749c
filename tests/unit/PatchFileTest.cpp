// SPDX-License-Identifier: Zlib
#include "sound/PatchFile.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

// Files in a folder of their own, and a record of what is printed.
class PatchFileTest : public testing::Test {
protected:
    using Values = std::map<std::int32_t, float>;

    static constexpr const char* mismatch =
        "PolyphonicSynth: Number of parameters in file does not match synth's number of "
        "parameters.\n";
    static constexpr const char* countLine = "static const int values = 3;\n"; // column 26: the 3
    static inline const std::string head = std::string(22, '\n') + countLine + "\n{\n";

    PatchFileTest() {
        std::string pattern = testing::TempDir() + "PatchFileTest.XXXXXX";
        folder = mkdtemp(pattern.data());
        coutBuffer = std::cout.rdbuf(printed.rdbuf());
    }

    ~PatchFileTest() override {
        std::cout.rdbuf(coutBuffer);
        std::filesystem::remove_all(folder);
    }

    std::string write(const std::string& bytes) const {
        std::ofstream(folder / "patch.inl", std::ios::binary) << bytes;
        return folder / "patch.inl";
    }

    // The values of a file for a voice of three parameters; what is printed meanwhile is kept.
    Values readPath(const std::string& path) {
        printed.str("");
        Values values;
        const PatchFile file(path, 3);
        for (const auto& [index, number] : file.getValues()) values[index] = number;
        return values;
    }
    Values read(const std::string& bytes) { return readPath(write(bytes)); }

    std::filesystem::path folder;
    std::ostringstream printed;
    std::streambuf* coutBuffer;
};

TEST_F(PatchFileTest, ReadsAValueALine) {
    const Values expected = {{0, 0.5f}, {1, -1.25f}, {2, 1e-3f}};
    EXPECT_EQ(read(head + "0.5f,\n-1.25f,\n1e-3f,\n};\n9f,\n"), expected);
    EXPECT_EQ(read(head + " 0.5, \n-1.25};\n1e-3  // a word\n}"), expected); // two characters go
    EXPECT_EQ(read(head + "0.5f,\n-1.25f,\n1e-3f,"), expected) << "no } and no line feed";
    EXPECT_EQ(printed.str(), "");
    EXPECT_EQ(read(head + "}"), Values());
    EXPECT_EQ(printed.str(), "") << "few values are no fault";
    EXPECT_EQ(read(std::string(22, '\n') + std::string(25, ' ') + "13;\n\n{\n1f,\n"),
              Values({{0, 1.0f}}))
        << "columns count";
}

TEST_F(PatchFileTest, AFileThatDoesNotFitIsRefusedWithALine) {
    std::string binary;
    for (int i = 0; i < 4000; ++i) binary += static_cast<char>(i * i * 37 >> 3);
    const std::string values = "\n{\n1f,\n2f,\n3f,\n};\n";
    const std::string refused[] = {
        "",
        "\n",
        std::string(22, '\n'),                                         // no line 23
        std::string(22, '\n') + std::string(25, ' ') + values,         // too short
        std::string(22, '\n') + std::string(26, ' ') + values,         // nothing in column 26
        std::string(22, '\n') + std::string(26, ' ') + "3" + values,   // which is cut off
        std::string(22, '\n') + std::string(26, ' ') + "2;" + values,  // another number
        std::string(22, '\n') + std::string(26, ' ') + "33;" + values, // another number
        std::string(22, '\n') + std::string(26, ' ') + "-3;" + values,
        std::string(22, '\n') + std::string(26, ' ') + "three;" + values,
        std::string(22, '\n') + std::string(26, ' ') + "99999999999999999999;" + values,
        std::string(21, '\n') + countLine + values, // on line 22
        std::string(23, '\n') + countLine + values, // on line 24
        std::string(1 << 20, 'x'),                  // one line of a megabyte
        binary,
    };
    for (const std::string& bytes : refused) {
        EXPECT_EQ(read(bytes), Values()) << bytes.substr(0, 100);
        EXPECT_EQ(printed.str(), mismatch) << bytes.substr(0, 100);
    }
    for (const std::string& path : {folder.string(), (folder / "missing.inl").string(),
                                    std::string("/dev/null"), std::string()}) {
        EXPECT_EQ(readPath(path), Values()) << path;
        EXPECT_EQ(printed.str(), mismatch) << path;
    }
}

TEST_F(PatchFileTest, ALineWithoutANumberIsSkippedAndCounts) {
    const std::string without[] = {"",
                                   "1",
                                   "f,",
                                   "word",
                                   "nanf,",
                                   "inff,",
                                   "-inff,",
                                   "1e39f,",
                                   "-1e39f,",
                                   "0x",
                                   ".f,",
                                   "-f,",
                                   " };",
                                   std::string(4, '\0'),
                                   "\xff\xfe\xff",
                                   std::string(1 << 20, 'x')};
    for (const std::string& line : without) {
        EXPECT_EQ(read(head + "1f,\n" + line + "\n3f,\n};\n"), Values({{0, 1.0f}, {2, 3.0f}}))
            << line.substr(0, 100);
    }
    EXPECT_EQ(read(head + "1f,\n2" + std::string(1 << 20, ' ') + "\n3f,\n};\n"),
              Values({{0, 1.0f}, {1, 2.0f}, {2, 3.0f}}));
}

TEST_F(PatchFileTest, OfCarriageReturnsEachIsOneOfTheDroppedCharacters) {
    std::string lines;
    for (const char c : head + "1,\n2,\n3,\n};\n") lines += c == '\n' ? "\r\n" : std::string(1, c);
    EXPECT_EQ(read(lines), Values({{0, 1.0f}, {1, 2.0f}, {2, 3.0f}}));
}

TEST_F(PatchFileTest, EndsWithAFileThatDoesNot) {
    std::string lines = head;
    for (int i = 0; i < 100000; ++i) lines += "1f,\n";
    EXPECT_LE(read(lines).size(), 1000u);
}
