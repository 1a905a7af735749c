// SPDX-License-Identifier: Zlib
#include "base/FilePath.h"

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include <gtest/gtest.h>

#include "platform/Platform.h"

// What is found at a path, and what the queries print.
static std::string describe(const FilePath& path) {
    testing::internal::CaptureStdout();
    std::string text = path.exists() ? "exists " : "";
    if (path.isFile()) text += "file ";
    if (path.isOrdinaryFile()) text += "ordinary ";
    if (path.open().is_open()) text += "opens ";
    if (path.isDirectory()) text += "folder " + std::to_string(path.getEntryCount());
    return text + path.getEntry(0).text() + testing::internal::GetCapturedStdout();
}

TEST(FilePath, FindsFilesAndFolders) {
    std::string pattern = testing::TempDir() + "FilePathTest.XXXXXX";
    const std::filesystem::path folder = mkdtemp(pattern.data());
    std::filesystem::current_path(folder);
    std::filesystem::create_directories("game-1.0/sub/deeper");
    std::filesystem::create_directories("empty");
    for (const char* name : {"file", "ends.", "game-1.0/b.c.txt", "game-1.0/.hidden"}) {
        std::ofstream(name) << "text";
    }
    std::filesystem::create_symlink("file", "toFile");
    std::filesystem::create_symlink("empty", "toFolder");
    std::filesystem::create_symlink("nowhere", "dangling");
    std::filesystem::create_symlink("circle", "circle");
    EXPECT_EQ(mkfifo("pipe", 0600), 0); // opening it would wait for a writer
    const std::string failure = "FilePath::isDirectory() error: ";
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"file", "exists file ordinary opens "},
        {"toFile", "exists file ordinary opens "},
        {"pipe", "exists file "},
        {"/dev/zero", "exists file "},
        {"empty", "exists folder 0"},
        {"toFolder", "exists folder 0"},
        {"dangling", failure + "No such file or directory\n"},
        {"file/below", failure + "Not a directory\n"},
        {"circle", failure + "Too many levels of symbolic links\n"},
        {std::string(300, 'x'), failure + "File name too long\n"},
    };
    for (const auto& [path, expected] : cases) EXPECT_EQ(describe(path), expected) << path;

    const FilePath game("game-1.0");
    EXPECT_EQ(game.getEntryCount(), 3u);
    const std::set found = {game.getEntry(0).text(), game.getEntry(1).text(),
                            game.getEntry(2).text(), game.getEntry(3).text()};
    EXPECT_EQ(found,
              (std::set<std::string>{"", "game-1.0/.hidden", "game-1.0/b.c.txt", "game-1.0/sub"}));
    EXPECT_EQ(FilePath("file").readStart(3) + FilePath("file").readStart(9), "textext");
    EXPECT_EQ(FilePath("pipe").readStart(9), "");
    EXPECT_EQ(game.join("b.c.txt").getExtension(), "txt");
    EXPECT_EQ(game.join(".hidden").getExtension(), "hidden");
    EXPECT_EQ(FilePath("ends.").getExtension(), "");
    EXPECT_EQ(FilePath("file").getExtension(), "file");
    EXPECT_EQ(game.getExtension(), "");
    EXPECT_EQ(FilePath().join("a/").join("/b").join("").text(), "/a///b/");
    std::filesystem::remove_all(folder);
}

TEST(FilePath, KnowsTheFoldersOfDataAndFonts) {
    EXPECT_EQ(FilePath::getDataDirectory().text(),
              std::filesystem::read_symlink("/proc/self/exe").parent_path());
    Platform::setEnvironment("SystemDrive", "/mnt/c");
    ASSERT_EQ(FilePath::getSystemFontDirectories().size(), 1u);
    EXPECT_EQ(FilePath::getSystemFontDirectories()[0].text(), "/mnt/c/Windows/Fonts");
    unsetenv("SystemDrive");
    EXPECT_TRUE(FilePath::getSystemFontDirectories().empty());
}
