// SPDX-License-Identifier: Zlib
// The settings file: where it lies, what a new one says, and what is made of one that is there.
#include "app/Settings.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include <gtest/gtest.h>

// The home that the password entry tells, null for no entry. In place of the system's, so that the
// settings of the person who runs the tests are never touched.
static const char* homeOfEntry = nullptr;

extern "C" passwd* getpwuid(uid_t) {
    static passwd entry = {};
    entry.pw_dir = const_cast<char*>(homeOfEntry);
    return homeOfEntry ? &entry : nullptr;
}

// Works in a folder of its own, without a display; the configuration folder is "config" there.
class SettingsTest : public testing::Test {
protected:
    SettingsTest() : before(std::filesystem::current_path()) {
        std::string pattern = testing::TempDir() + "SettingsTest.XXXXXX";
        folder = mkdtemp(pattern.data());
        std::filesystem::current_path(folder);
        setenv("XDG_CONFIG_HOME", (folder + "/config").c_str(), 1);
        unsetenv("DISPLAY");
        unsetenv("HOME");
        homeOfEntry = nullptr;
    }

    ~SettingsTest() override {
        std::filesystem::current_path(before);
        std::filesystem::remove_all(folder);
    }

    static std::string printedBy(const std::function<void()>& work) {
        testing::internal::CaptureStdout();
        work();
        return testing::internal::GetCapturedStdout();
    }
    static std::string printed() {
        return printedBy([] { Settings(); });
    }

    static std::string bytesOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // The fields that are not what they are without a file.
    static std::string changes() {
        const Settings settings;
        std::ostringstream changes;
        if (settings.width != 1024) changes << " w " << settings.width;
        if (settings.height != 768) changes << " h " << settings.height;
        if (settings.antialias != 6) changes << " a " << settings.antialias;
        if (!settings.fullscreen) changes << " window";
        if (settings.noSound) changes << " no sound";
        if (settings.noMusic) changes << " no music";
        if (settings.audioApi != "DirectSound") changes << " [" << settings.audioApi << "]";
        return changes.str();
    }
    // Those by a file of these bytes, which is read in silence and stays as it is.
    static std::string changesBy(const std::string& bytes) {
        std::filesystem::create_directories("config/Corvale");
        std::ofstream("config/Corvale/Corvale.conf", std::ios::binary) << bytes;
        std::string found;
        EXPECT_EQ(printedBy([&found] { found = changes(); }), "");
        EXPECT_EQ(bytesOf("config/Corvale/Corvale.conf"), bytes);
        return found;
    }

    static constexpr const char* newFile =
        "w 1024\r\nh 768\r\na 0\r\nf 1\r\nns 0\r\nnm 0\r\naa DirectSound\r\n";

    std::string folder;

private:
    std::filesystem::path before;
};

TEST_F(SettingsTest, TheFirstRunMakesFolderAndFileForTheUserAlone) {
    const std::string path = folder + "/config/Corvale";
    EXPECT_EQ(printed(), "Created " + path + " path.\n") << "of all folders the one is told";
    EXPECT_EQ(bytesOf(path + "/Corvale.conf"), newFile);
    for (const std::string& made : {std::string("config"), path}) {
        EXPECT_EQ(std::filesystem::status(made).permissions(), std::filesystem::perms::owner_all);
    }
    EXPECT_EQ(printed(), "") << "the second run finds them";
    EXPECT_EQ(changesBy(newFile), " a 0 [DirectSound\r]") << "what the first run itself goes by";

    std::filesystem::remove(path + "/Corvale.conf");
    EXPECT_EQ(printed(), "") << "a new file alone is not told";
    EXPECT_EQ(bytesOf(path + "/Corvale.conf"), newFile);
}

TEST_F(SettingsTest, TheFolderIsTheDesktopsElseTheHomesElseTheWorkingDirectorys) {
    setenv("HOME", (folder + "/home").c_str(), 1);
    homeOfEntry = "/nowhere";
    EXPECT_EQ(printed(), "Created " + folder + "/config/Corvale path.\n");
    for (const char* useless : {"relative", "./config", ""}) {
        setenv("XDG_CONFIG_HOME", useless, 1);
        std::filesystem::remove_all("home");
        EXPECT_EQ(printed(), "Created " + folder + "/home/.config/Corvale path.\n") << useless;
    }
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(printed(), "");

    const std::string home = folder + "/of entry";
    homeOfEntry = home.c_str();
    for (const char* value : {static_cast<const char*>(nullptr), ""}) {
        value ? setenv("HOME", value, 1) : unsetenv("HOME");
        std::filesystem::remove_all(home);
        EXPECT_EQ(printed(), "Created " + home + "/.config/Corvale path.\n");
    }

    const std::string failure = "Error: Could not find Application Data directory.\n";
    for (const char* entry : {"", static_cast<const char*>(nullptr)}) {
        homeOfEntry = entry;
        EXPECT_EQ(printed(), failure + "Could not create .Corvale/Corvale.conf\n");
    }
    std::filesystem::create_directory(".Corvale");
    EXPECT_EQ(printed(), failure);
    EXPECT_EQ(bytesOf(".Corvale/Corvale.conf"), newFile);
}

TEST_F(SettingsTest, WhatCannotBeMadeIsToldAndTheDefaultsStand) {
    namespace fs = std::filesystem;
    const fs::path file = "config/Corvale/Corvale.conf";
    const std::string path = folder + "/config/Corvale";
    const std::string folderFailure = "Could not create " + path + " path.\n";
    const std::string fileFailure = "Could not create " + path + "/Corvale.conf\n";
    const auto expectDefaults = [](const std::string& failure, const char* why) {
        EXPECT_EQ(printedBy([] { EXPECT_EQ(changes(), ""); }), failure) << why;
        fs::remove_all("config");
        fs::create_directory("config");
    };
    std::ofstream("config") << "a file";
    expectDefaults(fileFailure, "below a file nothing can be made");
    fs::remove("config");
    fs::create_symlink("config", "config");
    expectDefaults(folderFailure + fileFailure, "it leads nowhere but to itself");
    std::ofstream("config/Corvale") << "a file";
    expectDefaults(fileFailure, "whatever lies there counts as the folder");
    fs::create_directories(file);
    expectDefaults("", "a folder opens and cannot be read");
    fs::create_directory(file.parent_path());
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    expectDefaults("", "nobody is at the pipe's other end");
    fs::create_directory(file.parent_path());
    fs::create_symlink("/dev/zero", file);
    expectDefaults("", "it never ends");

    fs::permissions("config", fs::perms::none);
    const bool isRoot = geteuid() == 0;
    const uid_t nobody = 65534; // root may read everything
    ASSERT_EQ(seteuid(isRoot ? nobody : geteuid()), 0);
    const std::string text = printed();
    ASSERT_EQ(seteuid(getuid()), 0);
    EXPECT_EQ(text, folderFailure + fileFailure);
    fs::permissions("config", fs::perms::owner_all);
}

TEST_F(SettingsTest, EveryKeyIsReadBehindItsPlaceInTheLine) {
    const std::pair<std::string, const char*> cases[] = {
        {"", ""},
        {"w 800\r\nh 600\r\na 2\r\nf 0\r\nns 1\r\nnm 1\r\naa ALSA\r\n",
         " w 800 h 600 a 2 window no sound no music [ALSA\r]"},
        {"aa OSS\nnm 1\nf 0\nns 1\na 4\nh 1\nw 2\n", " w 2 h 1 a 4 window no sound no music [OSS]"},
        {"aa JACK", " [JACK]"}, // the last line may lack its end
        {"w 800", " w 800"},
        {"w 1\nw 2\nw x\n", " w 2"}, // the last one that is a number
        {"w 0\nh -5\na 0\n", " w 0 h -5 a 0"},
        {"width 800\nhx700\na_3\n", " h 700 a 3"}, // "dth 800" is no number
        {"w+9\nh   \t12 34\na 7x\n", " w 9 h 12 a 7"},
        {"f=0\nnsx1\nnmm1\n", " window no sound no music"},
        {"na 1\nn\nno 1\nn 1\n", ""},
        {"aaxALSA\n", " [ALSA]"},
        {"# w 5\n w 5\nW 5\n\n\r\nx\n[w 5]\n", ""},
        {"aa \n", " []"},
        {"aa\nw 5\n", " w 5 []"},
        {"aa", " []"},
        // Nothing of an earlier line may be left behind a shorter one.
        {"x 77 88\nw\nh \na\nf\nns\nnm\n", ""},
        {"w 5\n\nh", " w 5"},
        // A switch is 0 or 1.
        {"f 2\nns 2\nnm -1\nns true\n", ""},
        {"f 0\nf 2\nns 1\nns 2\nns x\n", " window no sound"},
        {"w 2147483647\nh -2147483648\n", " w 2147483647 h -2147483648"},
        // Bytes that are no text.
        {"h 6\n\n" + std::string(3, '\0') + "w 9\n\xff\xfe\na 3\n", " h 6 a 3"},
        {std::string("w 5\0 7\nh 6\n", 11), " w 5 h 6"},
    };
    for (const auto& [bytes, changes] : cases) EXPECT_EQ(changesBy(bytes), changes) << bytes;
    for (const std::string value : {" ", "x", "-", "2147483648", "-2147483649", ".5"}) {
        EXPECT_EQ(changesBy("w " + value + "\nh " + value + "\na " + value + "\nns " + value), "");
    }
}

TEST_F(SettingsTest, LongLinesEndAndTheNextOneIsReadWhole) {
    for (const std::size_t length : {126u, 127u, 128u, 129u, 254u, 255u, 256u, 10'000'000u}) {
        const std::string number = "w 5" + std::string(length - 3, ' ');
        const std::string name = "aa " + std::string(length - 3, 'y');
        const std::string read = name.substr(3, 124);
        EXPECT_EQ(changesBy(number + "\nh 6\n"), " w 5 h 6") << length;
        EXPECT_EQ(changesBy(number + "\r\nh 6\r\n"), " w 5 h 6") << length;
        EXPECT_EQ(changesBy(number), " w 5") << length << ", no end";
        EXPECT_EQ(changesBy(name + "\nh 6"), " h 6 [" + read + "]") << length;
    }
    // A key in the part that is dropped is none.
    EXPECT_EQ(changesBy(std::string(127, 'x') + "w 5\nh 6\n"), " h 6");
    EXPECT_EQ(changesBy(std::string(127, 'x') + "\nw 5\n"), " w 5");
}
