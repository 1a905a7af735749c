// SPDX-License-Identifier: Zlib
// The command line against the settings: who decides, what is printed, and how numbers are read.
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
        setenv("XDG_CONFIG_HOME", "/dev/null", 1); // no file is there or can be made there
    }

    // Settings that differ from everything that stands without any.
    static Settings ownSettings() {
        testing::internal::CaptureStdout();
        Settings settings;
        testing::internal::GetCapturedStdout();
        settings.width = 300;
        settings.height = 200;
        settings.antialias = 4;
        settings.fullscreen = false;
        settings.noSound = settings.noMusic = true;
        settings.audioApi = "ALSA\r";
        return settings;
    }

    // What becomes of a command line: what is printed, then the values.
    static std::string outcomeOf(const Arguments& arguments,
                                 const Settings& settings = ownSettings()) {
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

    struct Case {
        Arguments arguments;
        std::string outcome;
    };
    static void expectAll(const std::vector<Case>& cases) {
        for (const Case& line : cases) {
            EXPECT_EQ(outcomeOf(line.arguments), line.outcome)
                << testing::PrintToString(line.arguments);
        }
    }
    // With both sizes given, and nothing printed.
    static void expectValues(std::vector<Case> cases) {
        for (Case& line : cases) {
            line.arguments.insert(line.arguments.begin(), {"-w", "640", "-h", "480"});
        }
        expectAll(cases);
    }

    static inline const std::string defaultWidth = "Using default width = 1024\n";
    static inline const std::string defaultHeight = "Using default height = 768\n";
    static inline const std::string bothDefaults = defaultWidth + defaultHeight;
    static inline const std::string twice = "Using 2x antialiasing.\n";
};

TEST_F(LaunchOptionsTest, WithoutArgumentsTheSettingsDecide) {
    Settings settings = ownSettings();
    EXPECT_EQ(outcomeOf({}, settings), "300x200 4x no sound no music [ALSA\r]");
    settings.width = 0;
    settings.height = -5;
    settings.antialias = 1;
    settings.fullscreen = true;
    settings.noSound = false;
    EXPECT_EQ(outcomeOf({}, settings), "0x-5 1x full no music [ALSA\r]")
        << "a width of 0 stays, and so does 1 sample";
    settings.antialias = -3;
    EXPECT_EQ(outcomeOf({}, settings), "0x-5 full no music [ALSA\r]");
}

TEST_F(LaunchOptionsTest, AnyArgumentAtAllTakesTheSettingsOut) {
    for (const char* argument : {"", "x", "--Width", "-W", "-win ", "--nosound=1", "win", "ns"}) {
        EXPECT_EQ(outcomeOf({argument}), bothDefaults + "1024x768 full") << argument;
    }
    EXPECT_EQ(outcomeOf({"-ns"}), bothDefaults + "1024x768 full no sound");
}

TEST_F(LaunchOptionsTest, EveryOptionHasALongAndAShortFormInAnyOrder) {
    const std::string all = "640x480 8x no sound no music [JACK]";
    expectAll({{{"--width", "640", "--height", "480", "--antialias", "8", "--windowed", "--nosound",
                 "--nomusic", "--audio-api", "JACK"},
                all},
               {{"-aa", "JACK", "-nm", "-ns", "-win", "-a", "8", "-h", "480", "-w", "640"}, all}});
    expectValues({{{"-win"}, "640x480"},
                  {{"-ns"}, "640x480 full no sound"},
                  {{"-nm"}, "640x480 full no music"},
                  {{"-aa", "any thing"}, "640x480 full [any thing]"},
                  // The last one wins, and a value is an option in the other scans.
                  {{"-aa", "ALSA", "--audio-api", "OSS", "-aa"}, "640x480 full [OSS]"},
                  {{"-w", "800", "--width", "900"}, "900x480 full"},
                  {{"-aa", "-ns"}, "640x480 full no sound [-ns]"},
                  {{"-aa", "-aa", "OSS"}, "640x480 full [-aa]"},
                  {{"-aa", "-a", "8"}, "640x480 8x full [-a]"},
                  // Two samples at least, once they are named.
                  {{"-a", "8", "-a"}, "640x480 8x full"},
                  {{"-a", "2"}, "640x480 2x full"},
                  {{"-a", "1"}, twice + "640x480 2x full"},
                  {{"-a", "-4"}, twice + "640x480 2x full"},
                  {{"-a", "x"}, twice + "640x480 2x full"},
                  {{"--antialias"}, twice + "640x480 2x full"}});
}

TEST_F(LaunchOptionsTest, AllNumbersComeFromOneStreamAndDefaultsAreTold) {
    expectAll({
        // -h is the value of -a, and -w has none.
        {{"-a", "-h", "-w"}, bothDefaults + twice + "1024x768 2x full"},
        {{"-a", "0", "-win"}, bothDefaults + twice + "1024x768 2x"},
        {{"-w", "640"}, defaultHeight + "640x768 full"},
        {{"-h", "480", "-w"}, defaultWidth + "1024x480 full"},
        {{"-w", "0", "-h", "480"}, defaultWidth + "1024x480 full"},
        {{"-w", "", "-h", "480"}, defaultWidth + "1024x480 full"},
        {{"-w", "-5", "-h", "65536"}, "-5x65536 full"},
        {{"-w", "+640", "-h", "0480"}, "640x480 full"},
        // What is no number stays in front of all that follow,
        {{"-w", "wide", "-h", "480", "-a", "8"}, bothDefaults + twice + "1024x768 2x full"},
        {{"-w", "640", "-h", "high", "-a", "8"}, defaultHeight + twice + "640x768 2x full"},
        {{"-w", "640", "-w", "wide", "-w", "800", "-h", "480"}, defaultHeight + "640x768 full"},
        {{"-h", "480", "-w", "-w", "800"}, bothDefaults + "1024x768 full"},
        // and so does the rest of a number,
        {{"-w", "12abc", "-h", "480"}, defaultHeight + "12x768 full"},
        {{"-w", "640x480", "-h", "480", "-a", "8"}, defaultHeight + twice + "640x768 2x full"},
        // unless it is a blank or begins a number.
        {{"-w", " 640 ", "-h", "480"}, "640x480 full"},
        {{"-w", "640 7", "-h", "80"}, "640x780 full"},
        {{"-w", "640-", "-h", "480"}, "640x-480 full"},
        // A sign alone and a number that is too large are eaten.
        {{"-w", "-", "-h", "480"}, defaultWidth + "1024x480 full"},
        {{"-w", "99999999999", "-h", "480"}, defaultWidth + "1024x480 full"},
    });
}

TEST_F(LaunchOptionsTest, HelpIsAllThatHappensWhereverItStands) {
    const std::string help =
        "\nTarnwick Episode\n\nUsage:\n"
        "Tarnwick.exe -w [width] -h [height] -a [val] win -ns -nm -aa [name]\n\nFlags:\n"
        "--width [val] | -w [val]:\tSet the width of the window.\n"
        "--height [val] | -h [val]:\tSet the height of the window.\n"
        "--antialias [val] | -a [val]:\tSets the antialiasing level (2, 4, or 6).\n"
        "--windowed | -win:\t\tSets whether to start the game in a window rather than fullscreen.\n"
        "--nosound | -ns:\t\tSwitches off the sound output.\n"
        "--nomusic | -nm:\t\tSwitches off the background music.\n"
        "--audio-api [name] | -aa [name]:\t\tSets the audio API to use.  "
        "Can be DirectSound, ASIO, MME, ALSA, JACK, OSS, CoreAudio.\n"
        "--help:\t\t\t\tDisplay this help.\n"
        "ends with \n";
    expectAll({{{"--help"}, help},
               {{"-w", "640", "-win", "-a", "--help"}, help},
               {{"-aa", "--help", "-ns"}, help}}); // also as a value
}
