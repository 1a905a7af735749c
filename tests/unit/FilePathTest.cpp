// SPDX-License-Identifier: Zlib
#include "base/FilePath.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>

#include <gtest/gtest.h>

#include "platform/Platform.h"

// A folder of its own for each test. What is printed must be taken.
class FilePathTest : public testing::Test {
protected:
    FilePathTest() {
        std::string pattern = testing::TempDir() + "FilePathTest.XXXXXX";
        folder = mkdtemp(pattern.data());
        testing::internal::CaptureStdout();
    }

    ~FilePathTest() override {
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        std::filesystem::remove_all(folder);
    }

    // What was printed since the last call.
    static std::string takePrinted() {
        const std::string text = testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        return text;
    }

    FilePath inFolder(const std::string& name) const { return FilePath(folder).join(name); }

    FilePath makeFile(const std::string& name) const {
        std::ofstream(inFolder(name).text()) << name;
        return inFolder(name);
    }

    FilePath makeFolder(const std::string& name) const {
        std::filesystem::create_directories(inFolder(name).text());
        return inFolder(name);
    }

    static constexpr const char* missingLine =
        "FilePath::isDirectory() error: No such file or directory\n";

    std::string folder;
};

TEST_F(FilePathTest, EveryQuestionAboutTheEmptyPathIsAnsweredInSilence) {
    const FilePath empty;
    EXPECT_FALSE(empty.exists());
    EXPECT_FALSE(empty.isFile());
    EXPECT_FALSE(empty.isDirectory());
    EXPECT_EQ(empty.getExtension(), "");
    EXPECT_EQ(empty.getEntryCount(), 0u);
    EXPECT_EQ(empty.getEntry(0).text(), ""); // not the first entry of the root folder
    EXPECT_EQ(empty.join("a/").join("/b").join("").text(), "/a///b/") << "blindly appended";
}

TEST_F(FilePathTest, FilesFoldersAndLinksAreToldApart) {
    const FilePath file = makeFile("file"), directory = makeFolder("sub");
    std::filesystem::create_symlink("file", inFolder("toFile").text());
    std::filesystem::create_symlink("sub", inFolder("toFolder").text());
    for (const FilePath& path : {file, inFolder("toFile"), FilePath("/dev/null")}) {
        EXPECT_TRUE(path.exists() && path.isFile() && !path.isDirectory()) << path.text();
    }
    for (const FilePath& path : {directory, inFolder("toFolder"), FilePath("/"), FilePath(".")}) {
        EXPECT_TRUE(path.exists() && !path.isFile() && path.isDirectory()) << path.text();
    }
}

// Opening a pipe would wait for somebody at its other end.
TEST_F(FilePathTest, OnlyFilesThatEndAreOpened) {
    const FilePath pipe = inFolder("pipe");
    ASSERT_EQ(mkfifo(pipe.text().c_str(), 0600), 0);
    for (const FilePath& path :
         {pipe, FilePath("/dev/zero"), makeFolder("sub"), inFolder("none")}) {
        EXPECT_FALSE(path.isOrdinaryFile() || path.open().is_open()) << path.text();
    }
    std::string word;
    EXPECT_TRUE(makeFile("file").open() >> word);
    EXPECT_EQ(word, "file");
}

TEST_F(FilePathTest, OnlyTheQuestionForAFolderPrintsWhyItFailed) {
    std::filesystem::create_symlink("nowhere", inFolder("dangling").text());
    std::filesystem::create_symlink("circle", inFolder("circle").text());
    const std::pair<FilePath, std::string> failures[] = {
        {inFolder("missing"), "No such file or directory"},
        {inFolder("dangling"), "No such file or directory"},
        {makeFile("file").join("below"), "Not a directory"},
        {inFolder("circle"), "Too many levels of symbolic links"},
        {inFolder(std::string(300, 'x')), "File name too long"}};
    for (const auto& [path, reason] : failures) {
        EXPECT_FALSE(path.exists());
        EXPECT_FALSE(path.isFile());
        EXPECT_EQ(path.getEntry(0).text(), "");
        EXPECT_EQ(takePrinted(), "");
        EXPECT_FALSE(path.isDirectory());
        EXPECT_EQ(takePrinted(), "FilePath::isDirectory() error: " + reason + "\n");
        EXPECT_FALSE(Platform::listDirectory(path.text()).has_value());
    }
    EXPECT_EQ(inFolder("missing").getEntryCount(), 0u);
    EXPECT_EQ(takePrinted(), missingLine);
}

TEST_F(FilePathTest, TheExtensionIsWhatFollowsTheLastDotOfTheWholePath) {
    EXPECT_EQ(makeFile("level.one.txt").getExtension(), "txt");
    EXPECT_EQ(makeFile(".txt").getExtension(), "txt");
    EXPECT_EQ(makeFile("ends.").getExtension(), "");
    EXPECT_EQ(makeFolder("game-1.0").getExtension(), "");
    EXPECT_EQ(makeFile("game-1.0/readme").getExtension(), "0/readme");
    EXPECT_EQ(FilePath("/dev/null").getExtension(), "/dev/null"); // no dot at all
    EXPECT_EQ(takePrinted(), "");
    EXPECT_EQ(inFolder("missing.png").getExtension(), "png");
    EXPECT_EQ(takePrinted(), missingLine);
}

TEST_F(FilePathTest, EntriesAreFilesFoldersAndHiddenFilesOnceEach) {
    EXPECT_EQ(FilePath(folder).getEntryCount(), 0u);
    EXPECT_EQ(FilePath(folder).getEntry(0).text(), "");
    makeFile("b");
    makeFile(".hidden");
    makeFile("..odd");
    makeFolder("sub/deeper");
    const FilePath path(folder);
    ASSERT_EQ(path.getEntryCount(), 4u);
    std::set<std::string> found;
    for (std::uint32_t i = 0; i < 4; ++i) found.insert(path.getEntry(i).text());
    EXPECT_EQ(found, (std::set<std::string>{folder + "/b", folder + "/.hidden", folder + "/..odd",
                                            folder + "/sub"}));
    EXPECT_EQ(path.getEntry(4).text(), "");
    EXPECT_EQ(path.getEntry(0xFFFFFFFF).text(), "");
    EXPECT_EQ(inFolder("b").getEntryCount(), 0u);
    EXPECT_EQ(inFolder("b").getEntry(0).text(), "");

    rlimit limit = {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit none = {0, limit.rlim_max}; // no file opens any more, not for root either
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const bool isDirectory = FilePath(folder).isDirectory();
    const std::uint32_t count = FilePath(folder).getEntryCount();
    const std::string first = FilePath(folder).getEntry(0).text();
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_TRUE(isDirectory);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(first, "");
    EXPECT_EQ(FilePath(folder).getEntryCount(), 4u);
}

// The next test runs this one in a program that lies elsewhere.
TEST(FilePathElsewhere, PrintsTheDataFolder) {
    std::cout << "data folder: " << FilePath::getDataDirectory().text() << std::endl;
}

TEST_F(FilePathTest, TheDataFolderIsThatOfTheProgramItselfHoweverItIsReached) {
    namespace fs = std::filesystem;
    EXPECT_EQ(FilePath::getDataDirectory().text(),
              fs::read_symlink("/proc/self/exe").parent_path());

    std::string deep; // longer than any first buffer
    for (int i = 0; i < 3; ++i) deep += std::string(200, static_cast<char>('a' + i)) + "/";
    const fs::path home = fs::canonical(makeFolder(deep + "a b").text());
    fs::copy_file("/proc/self/exe", home / "game");
    fs::create_symlink(home / "game", inFolder("started").text());
    const std::string command = inFolder("started").text() + " --gtest_filter=FilePathElsewhere.*";
    FILE* run = popen(command.c_str(), "r");
    ASSERT_NE(run, nullptr);
    std::string output;
    for (int c = std::fgetc(run); c != EOF; c = std::fgetc(run)) output += static_cast<char>(c);
    EXPECT_EQ(pclose(run), 0);
    EXPECT_NE(output.find("data folder: " + home.string() + "\n"), std::string::npos) << output;
}

TEST_F(FilePathTest, FontFoldersLieOnTheSystemDriveIfThatIsKnown) {
    Platform::setEnvironment("SystemDrive", "/mnt/c");
    const std::vector<FilePath> folders = FilePath::getSystemFontDirectories();
    ASSERT_EQ(folders.size(), 1u);
    EXPECT_EQ(folders[0].text(), "/mnt/c/Windows/Fonts");
    unsetenv("SystemDrive");
    EXPECT_TRUE(FilePath::getSystemFontDirectories().empty());
}
