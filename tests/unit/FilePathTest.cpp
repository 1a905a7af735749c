// SPDX-License-Identifier: Zlib
#include "base/FilePath.h"

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "platform/Platform.h"

// Each test has a folder of its own, and must take all that is printed.
class FilePathTest : public testing::Test {
protected:
    FilePathTest() {
        std::string pattern = testing::TempDir() + "FilePathTest.XXXXXX";
        folder = FilePath(mkdtemp(pattern.data()));
        coutBuffer = std::cout.rdbuf(printed.rdbuf());
    }

    ~FilePathTest() override {
        std::cout.rdbuf(coutBuffer);
        EXPECT_EQ(printed.str(), "");
        std::filesystem::remove_all(folder.text());
    }

    std::string takePrinted() {
        const std::string text = printed.str();
        printed.str("");
        return text;
    }

    FilePath makeFile(const std::string& name) const {
        std::ofstream(folder.join(name).text()) << name;
        return folder.join(name);
    }

    FilePath makeFolder(const std::string& name) const {
        std::filesystem::create_directories(folder.join(name).text());
        return folder.join(name);
    }

    FilePath makeLink(const std::string& target, const std::string& name) const {
        std::filesystem::create_symlink(target, folder.join(name).text());
        return folder.join(name);
    }

    FilePath folder;

private:
    std::ostringstream printed;
    std::streambuf* coutBuffer;
};

TEST_F(FilePathTest, TheEmptyPathIsNothing) {
    const FilePath empty;
    EXPECT_FALSE(empty.exists() || empty.isFile() || empty.isDirectory());
    EXPECT_EQ(empty.getExtension(), "");
    EXPECT_EQ(empty.getEntryCount(), 0u);
    EXPECT_EQ(empty.getEntry(0).text(), ""); // not the first entry of the root folder
    EXPECT_EQ(empty.join("a/").join("/b").join("").text(), "/a///b/");
}

TEST_F(FilePathTest, TellsFilesFromFoldersThroughLinks) {
    const FilePath file = makeFile("file"), sub = makeFolder("sub");
    for (const FilePath& path : {file, makeLink("file", "toFile"), FilePath("/dev/null")}) {
        EXPECT_TRUE(path.exists() && path.isFile() && !path.isDirectory()) << path.text();
    }
    for (const FilePath& path : {sub, makeLink("sub", "toFolder"), FilePath("/")}) {
        EXPECT_TRUE(path.exists() && !path.isFile() && path.isDirectory()) << path.text();
    }
}

TEST_F(FilePathTest, OpensRegularFilesOnly) {
    const FilePath pipe = folder.join("pipe");
    ASSERT_EQ(mkfifo(pipe.text().c_str(), 0600), 0); // opening it would wait for a writer
    for (const FilePath& path : {pipe, FilePath("/dev/zero"), folder, folder.join("none")}) {
        EXPECT_FALSE(path.isOrdinaryFile() || path.open().is_open()) << path.text();
    }
    std::string word;
    EXPECT_TRUE(makeFile("file").open() >> word);
    EXPECT_EQ(word, "file");
    EXPECT_EQ(makeFile("file").readStart(3) + makeFile("file").readStart(9), "filfile");
    EXPECT_EQ(pipe.readStart(9) + folder.readStart(9), "");
}

TEST_F(FilePathTest, OnlyIsDirectoryPrintsFailures) {
    const std::pair<FilePath, std::string> failures[] = {
        {makeLink("nowhere", "dangling"), "No such file or directory"},
        {makeFile("file").join("below"), "Not a directory"},
        {makeLink("circle", "circle"), "Too many levels of symbolic links"},
        {folder.join(std::string(300, 'x')), "File name too long"}};
    for (const auto& [path, reason] : failures) {
        EXPECT_FALSE(path.exists() || path.isFile() || path.open().is_open());
        EXPECT_EQ(path.getEntry(0).text(), "");
        EXPECT_EQ(takePrinted(), "");
        EXPECT_FALSE(path.isDirectory());
        EXPECT_EQ(takePrinted(), "FilePath::isDirectory() error: " + reason + "\n");
    }
    EXPECT_EQ(folder.join("missing").getEntryCount(), 0u);
    EXPECT_NE(takePrinted(), "");
}

TEST_F(FilePathTest, TheExtensionFollowsTheLastDotOfThePath) {
    EXPECT_EQ(makeFile("level.one.txt").getExtension(), "txt");
    EXPECT_EQ(makeFile("ends.").getExtension(), "");
    EXPECT_EQ(makeFolder("game-1.0").getExtension(), "");
    EXPECT_EQ(makeFile("game-1.0/readme").getExtension(), "0/readme");
    EXPECT_EQ(FilePath("/dev/null").getExtension(), "/dev/null");
    EXPECT_EQ(folder.join("missing.png").getExtension(), "png");
    EXPECT_NE(takePrinted(), "");
}

TEST_F(FilePathTest, ListsEachEntryOnce) {
    EXPECT_EQ(folder.getEntryCount(), 0u);
    for (const char* name : {"b", ".hidden", "..odd"}) makeFile(name);
    makeFolder("sub/deeper");
    ASSERT_EQ(folder.getEntryCount(), 4u);
    std::set<std::string> found;
    for (std::uint32_t i = 0; i < 4; ++i) found.insert(folder.getEntry(i).text());
    const std::string prefix = folder.text() + "/";
    EXPECT_EQ(found,
              (std::set{prefix + "b", prefix + ".hidden", prefix + "..odd", prefix + "sub"}));
    EXPECT_EQ(folder.getEntry(4).text(), "");
    EXPECT_EQ(folder.join("b").getEntryCount(), 0u);
}

TEST_F(FilePathTest, KnowsTheFoldersOfDataAndFonts) {
    EXPECT_EQ(FilePath::getDataDirectory().text(),
              std::filesystem::read_symlink("/proc/self/exe").parent_path());
    Platform::setEnvironment("SystemDrive", "/mnt/c");
    ASSERT_EQ(FilePath::getSystemFontDirectories().size(), 1u);
    EXPECT_EQ(FilePath::getSystemFontDirectories()[0].text(), "/mnt/c/Windows/Fonts");
    unsetenv("SystemDrive");
    EXPECT_TRUE(FilePath::getSystemFontDirectories().empty());
}
