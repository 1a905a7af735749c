// SPDX-License-Identifier: Zlib
// The command line and the settings: which one decides, what is printed, and how numbers are read.
#include "app/LaunchOptions.h"

#include <cstdlib>
#include <sstream>

#include <gtest/gtest.h>

#include "app/FatalError.h"
#include "app/Settings.h"

class LaunchOptionsTest : public testing::Test {
protected:
    using Arguments = std::vector<std::string>;

    LaunchOptionsTest() {
        unsetenv("DISPLAY");                       // the screen then counts as 1024 by 768
        setenv("XDG_CONFIG_HOME", "/dev/null", 1); // no file can exist there
    }

    // The output of a command line, then its values.
    static std::string outcomeOf(const Arguments& arguments) {
        testing::internal::CaptureStdout();
        Settings settings;
        testing::internal::GetCapturedStdout();
        settings.width = 0;
        settings.height = 200;
        settings.antialias = 1;
        settings.fullscreen = false;
        settings.noSound = true;
        settings.audioApi = "ALSA\r";
        std::ostringstream values;
        testing::internal::CaptureStdout();
        try {
            const LaunchOptions options(arguments, settings);
            values << options.width << "x" << options.height;
            if (options.antialiasing != 0) values << " " << options.antialiasing << "x";
            if (options.fullscreen) values << " full";
            if (options.noSound) values << " no sound";
            if (options.noMusic) values << " no music";
            if (!options.audioApi.empty()) values << " [" << options.audioApi << "]";
        } catch (const FatalError& error) {
            values << "ends with " << error.text;
        }
        return testing::internal::GetCapturedStdout() + values.str();
    }

    static inline const std::string defaultWidth = "Using default width = 1024\n";
    static inline const std::string defaultHeight = "Using default height = 768\n";
    static inline const std::string bothDefaults = defaultWidth + defaultHeight;
    static inline const std::string twice = "Using 2x antialiasing.\n";
};

TEST_F(LaunchOptionsTest, WithoutArgumentsTheSettingsDecide) {
    EXPECT_EQ(outcomeOf({}), "0x200 1x no sound [ALSA\r]") << "no default, no least value";
}

TEST_F(LaunchOptionsTest, ArgumentsReplaceTheSettings) {
    const std::string all = "640x480 8x no sound no music [JACK]";
    const std::pair<Arguments, std::string> cases[] = {
        {{"--Width", "win"}, bothDefaults + "1024x768 full"},
        {{"--width", "640", "--height", "480", "--antialias", "8", "--windowed", "--nosound",
          "--nomusic", "--audio-api", "JACK"},
         all},
        {{"-aa", "JACK", "-nm", "-ns", "-win", "-a", "8", "-h", "480", "-w", "640"}, all},
        // The last one wins.
        {{"-w", "8", "--width", "640", "-h", "480", "-aa", "ALSA", "-aa", "OSS", "-aa"},
         "640x480 full [OSS]"},
        // A value may be an option as well, but not the same option again.
        {{"-w", "640", "-h", "480", "-aa", "-ns"}, "640x480 full no sound [-ns]"},
        {{"-w", "640", "-h", "480", "-aa", "-aa", "OSS"}, "640x480 full [-aa]"},
        // Antialiasing has at least two samples once it is named.
        {{"-w", "640", "-h", "480", "-a", "1"}, twice + "640x480 2x full"},
        {{"-w", "640", "-h", "480", "-a", "2"}, "640x480 2x full"},
        {{"-w", "640", "-h", "480", "--antialias"}, twice + "640x480 2x full"},
        {{"-w", "0", "-h", "480"}, defaultWidth + "1024x480 full"},
        // All numbers come from one stream. Text that is not a number stays ahead of what follows.
        {{"-w", "wide", "-h", "480", "-a", "8"}, bothDefaults + twice + "1024x768 2x full"},
        {{"-w", "640", "-w", "wide", "-w", "800", "-h", "480"}, defaultHeight + "640x768 full"},
        // So does what follows a number, unless a number can start with it.
        {{"-w", "640x480", "-h", "480", "-a", "8"}, defaultHeight + twice + "640x768 2x full"},
        {{"-w", "640-", "-h", "480"}, "640x-480 full"},
        // A sign alone and a number that is too large are consumed.
        {{"-w", "-", "-h", "480"}, defaultWidth + "1024x480 full"},
        {{"-w", "99999999999", "-h", "480"}, defaultWidth + "1024x480 full"}};
    for (const auto& [arguments, outcome] : cases) {
        EXPECT_EQ(outcomeOf(arguments), outcome) << testing::PrintToString(arguments);
    }
}

TEST_F(LaunchOptionsTest, HelpPrintsNothingButTheHelp) {
    const std::string help = outcomeOf({"--help"});
    EXPECT_TRUE(help.starts_with("\nTarnwick Episode\n\nUsage:\nTarnwick.exe -w [width] ")) << help;
    EXPECT_TRUE(help.ends_with("\n--help:\t\t\t\tDisplay this help.\nends with \n")) << help;
    EXPECT_EQ(outcomeOf({"-w", "640", "-a", "--help"}), help) << "even as a value";
}
