// SPDX-License-Identifier: Zlib
// The settings file: where it is, what a new one contains, and how an existing one is read.
#include "app/Settings.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

// The home in the password entry, null for no entry. It replaces the system's, so that a test never
// touches the settings of the person who runs it.
static const char* homeOfEntry = nullptr;

extern "C" int getpwuid_r(uid_t, passwd* entry, char*, std::size_t room, passwd** result) {
    *result = nullptr;
    if (room < 2000) return ERANGE;
    entry->pw_dir = const_cast<char*>(homeOfEntry);
    if (homeOfEntry) *result = entry;
    return 0;
}

// Runs in its own folder, without a display. The configuration folder is "config" in it.
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

    static std::string bytesOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // What reading the settings prints, and the fields that then differ from the defaults.
    static std::string outcome() {
        testing::internal::CaptureStdout();
        const Settings settings;
        std::ostringstream changes;
        if (settings.width != 1024) changes << " w " << settings.width;
        if (settings.height != 768) changes << " h " << settings.height;
        if (settings.antialias != 6) changes << " a " << settings.antialias;
        if (!settings.fullscreen) changes << " window";
        if (settings.noSound) changes << " no sound";
        if (settings.noMusic) changes << " no music";
        if (settings.audioApi != "DirectSound") changes << " [" << settings.audioApi << "]";
        return testing::internal::GetCapturedStdout() + changes.str();
    }
    // The outcome with a file of these bytes, which stays as it is.
    static std::string outcomeOf(const std::string& bytes) {
        std::filesystem::create_directories("config/Corvale");
        std::ofstream("config/Corvale/Corvale.conf", std::ios::binary) << bytes;
        const std::string found = outcome();
        EXPECT_EQ(bytesOf("config/Corvale/Corvale.conf"), bytes);
        return found;
    }

    static constexpr const char* ofNewFile = " a 0 [DirectSound\r]";

    std::string folder;

private:
    std::filesystem::path before;
};

TEST_F(SettingsTest, TheFirstRunCreatesFolderAndFileForTheUserAlone) {
    const std::string path = folder + "/config/Corvale";
    EXPECT_EQ(outcome(), "Created " + path + " path.\n" + ofNewFile)
        << "only the last folder is reported";
    EXPECT_EQ(bytesOf(path + "/Corvale.conf"),
              "w 1024\r\nh 768\r\na 0\r\nf 1\r\nns 0\r\nnm 0\r\naa DirectSound\r\n");
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms::owner_all);
}

TEST_F(SettingsTest, TheFolderIsTheDesktopsElseTheHomesElseTheWorkingDirectorys) {
    setenv("HOME", (folder + "/home").c_str(), 1);
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(outcome(), "Created " + folder + "/home/.config/Corvale path.\n" + ofNewFile);
    const std::string home = folder + "/of entry";
    homeOfEntry = home.c_str();
    unsetenv("HOME");
    EXPECT_EQ(outcome(), "Created " + home + "/.config/Corvale path.\n" + ofNewFile);

    homeOfEntry = nullptr;
    std::filesystem::create_directory(".Corvale");
    const std::string failure = "Error: Could not find Application Data directory.\n";
    EXPECT_EQ(outcome(), failure + ofNewFile);
}

TEST_F(SettingsTest, WhatCannotBeCreatedIsReportedAndTheDefaultsHold) {
    namespace fs = std::filesystem;
    const fs::path file = "config/Corvale/Corvale.conf";
    const std::string path = folder + "/config/Corvale";
    const std::string readFailure = "Could not read " + path + "/Corvale.conf\n";
    fs::create_symlink("config", "config"); // leads to itself
    EXPECT_EQ(outcome(), "Could not create " + path + " path.\n" + readFailure);
    fs::remove("config");
    fs::create_directories(file);
    EXPECT_EQ(outcome(), readFailure) << "a folder can be opened but not read";
    fs::remove(file);
    fs::create_symlink("/nowhere/file", file);
    EXPECT_EQ(outcome(), readFailure);
    EXPECT_TRUE(fs::is_symlink(file)) << "the link is not replaced";
    fs::remove(file);
    fs::create_symlink("/dev/full", file.string() + ".new");
    EXPECT_EQ(outcome(), "Could not create " + path + "/Corvale.conf\n");
    EXPECT_FALSE(fs::exists(file)) << "half a file is worse than none";
}

TEST_F(SettingsTest, EachKeyHasItsValueAtAFixedColumn) {
    const std::pair<std::string, const char*> cases[] = {
        {"w 800\r\nh 600\r\na 2\r\nf 0\r\nns 1\r\nnm 1\r\naa ALSA\r\n",
         " w 800 h 600 a 2 window no sound no music [ALSA\r]"},
        {"w 1\nw 2\nw x\nw 2147483648\n", " w 2"}, // the last one that is a number
        {"width 800\nhx700\na_3\nf=0\nnsx1\nnmx1\naaxALSA",
         " h 700 a 3 window no sound no music [ALSA]"},
        {"na 1\nn\nno 1\nn 1\n# w 5\n w 5\nW 5\n\n\r\nx\n", ""},
        {"aa\nw 5\n", " w 5 []"},
        {"x 77 88\nw\nh \na\nf\nns\nnm\n", ""}, // nothing is left over from a longer line
        {"f 2\nns 2\nnm -1\nns true\n", ""},    // a switch is 0 or 1
        {"h 6\n\n" + std::string(3, '\0') + "w 9\n\xff\xfe\na 3\n", " h 6 a 3"},
        {std::string(127, 'x') + "w 5\nh 6\n", " h 6"}, // lines are cut
        {"h 6\n" + std::string(1 << 20, '\n') + "w 5\n", " h 6"},
    };
    for (const auto& [bytes, changes] : cases) EXPECT_EQ(outcomeOf(bytes), changes) << bytes;
    for (const std::size_t length : {127u, 128u}) {
        const std::string name(length - 3, 'y');
        EXPECT_EQ(outcomeOf("aa " + name + "\nh 6"), " h 6 [" + name.substr(0, 124) + "]");
    }
}
