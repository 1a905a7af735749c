// SPDX-License-Identifier: Zlib
// The command line against the settings: who decides, what is printed, and how numbers are read.
#include "app/LaunchOptions.h"

#include <cstdlib>
#include <iostream>
#include <sstream>

#include <gtest/gtest.h>

#include "app/FatalError.h"
#include "app/Settings.h"

class LaunchOptionsTest : public testing::Test {
protected:
    using Arguments = std::vector<std::string>;

    // What becomes of a command line: what is printed, then the values that are not what they are
    // without any option ("api" for a name, "full" for a full screen).
    struct Outcome {
        std::string printed;
        std::string values;

        bool operator==(const Outcome&) const = default;
        friend std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
            return out << outcome.values << ", printed: " << outcome.printed;
        }
    };

    LaunchOptionsTest() {
        unsetenv("DISPLAY"); // the screen then counts as 1024 by 768
        setenv("XDG_CONFIG_HOME", (testing::TempDir() + "LaunchOptionsTest").c_str(), 1);
    }

    // Settings that differ from everything that stands without any.
    static Settings ownSettings() {
        std::ostringstream printed;
        std::streambuf* real = std::cout.rdbuf(printed.rdbuf());
        Settings settings;
        std::cout.rdbuf(real);
        settings.width = 300;
        settings.height = 200;
        settings.antialias = 4;
        settings.fullscreen = false;
        settings.noSound = true;
        settings.noMusic = true;
        settings.audioApi = "ALSA\r";
        return settings;
    }

    static Outcome outcomeOf(const Arguments& arguments, const Settings& settings = ownSettings()) {
        std::ostringstream printed;
        std::streambuf* real = std::cout.rdbuf(printed.rdbuf());
        std::ostringstream values;
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
        std::cout.rdbuf(real);
        return {printed.str(), values.str()};
    }

    // For a command line that gives both sizes, and prints nothing.
    static std::string valuesOf(Arguments arguments) {
        arguments.insert(arguments.begin(), {"-w", "640", "-h", "480"});
        const Outcome outcome = outcomeOf(arguments);
        EXPECT_EQ(outcome.printed, "");
        return outcome.values;
    }

    static constexpr const char* defaultWidth = "Using default width = 1024\n";
    static constexpr const char* defaultHeight = "Using default height = 768\n";
    static inline const std::string bothDefaults = std::string(defaultWidth) + defaultHeight;
    static constexpr const char* twice = "Using 2x antialiasing.\n";
};

TEST_F(LaunchOptionsTest, WithoutArgumentsTheSettingsDecide) {
    Settings settings = ownSettings();
    EXPECT_EQ(outcomeOf({}, settings), (Outcome{"", "300x200 4x no sound no music [ALSA\r]"}));
    settings.width = 0;
    settings.height = -5;
    settings.antialias = 1;
    settings.fullscreen = true;
    settings.noSound = false;
    EXPECT_EQ(outcomeOf({}, settings), (Outcome{"", "0x-5 1x full no music [ALSA\r]"}))
        << "a width of 0 stays, and so does 1 sample";
    settings.antialias = -3;
    EXPECT_EQ(outcomeOf({}, settings), (Outcome{"", "0x-5 full no music [ALSA\r]"}));
}

TEST_F(LaunchOptionsTest, AnyArgumentAtAllTakesTheSettingsOut) {
    for (const char* argument : {"", "x", "--Width", "-W", "-win ", "--nosound=1", "win", "ns"}) {
        EXPECT_EQ(outcomeOf({argument}), (Outcome{bothDefaults, "1024x768 full"})) << argument;
    }
    EXPECT_EQ(outcomeOf({"-ns"}), (Outcome{bothDefaults, "1024x768 full no sound"}));
}

TEST_F(LaunchOptionsTest, EveryOptionHasALongAndAShortForm) {
    const Outcome all = {"", "640x480 8x no sound no music [JACK]"};
    EXPECT_EQ(outcomeOf({"--width", "640", "--height", "480", "--antialias", "8", "--windowed",
                         "--nosound", "--nomusic", "--audio-api", "JACK"}),
              all);
    EXPECT_EQ(outcomeOf({"-aa", "JACK", "-nm", "-ns", "-win", "-a", "8", "-h", "480", "-w", "640"}),
              all)
        << "in any order";
    EXPECT_EQ(valuesOf({"-win"}), "640x480");
    EXPECT_EQ(valuesOf({"-ns"}), "640x480 full no sound");
    EXPECT_EQ(valuesOf({"-nm"}), "640x480 full no music");
    EXPECT_EQ(valuesOf({"-aa", "any thing"}), "640x480 full [any thing]");
    EXPECT_EQ(valuesOf({"-aa", "ALSA", "--audio-api", "OSS", "-aa"}), "640x480 full [OSS]");
    EXPECT_EQ(valuesOf({"-w", "800", "--width", "900"}), "900x480 full") << "the last one wins";
}

TEST_F(LaunchOptionsTest, SaysWhatItDecidesInTheOrderOfItsScans) {
    EXPECT_EQ(outcomeOf({"-a", "-h", "-w"}), (Outcome{bothDefaults + twice, "1024x768 2x full"}))
        << "-h is the value of -a, and -w has none";
    EXPECT_EQ(outcomeOf({"-a", "0", "-win"}), (Outcome{bothDefaults + twice, "1024x768 2x"}));
    EXPECT_EQ(outcomeOf({"-w", "640"}), (Outcome{defaultHeight, "640x768 full"}));
    EXPECT_EQ(outcomeOf({"-h", "480"}), (Outcome{defaultWidth, "1024x480 full"}))
        << "-h is the height, no help";
    EXPECT_EQ(outcomeOf({"-h", "480", "-w"}), (Outcome{defaultWidth, "1024x480 full"}));
    EXPECT_EQ(outcomeOf({"-w", "0", "-h", "480"}), (Outcome{defaultWidth, "1024x480 full"}));
    EXPECT_EQ(outcomeOf({"-w", "-5", "-h", "65536"}), (Outcome{"", "-5x65536 full"}));
}

TEST_F(LaunchOptionsTest, AntialiasingIsTwoAtLeastOnceItIsNamed) {
    for (const char* value : {"1", "0", "-4", "x", ""}) {
        EXPECT_EQ(outcomeOf({"-w", "640", "-h", "480", "-a", value}),
                  (Outcome{twice, "640x480 2x full"}))
            << value;
    }
    EXPECT_EQ(outcomeOf({"-w", "640", "-h", "480", "--antialias"}),
              (Outcome{twice, "640x480 2x full"}));
    EXPECT_EQ(valuesOf({"-a", "2"}), "640x480 2x full");
    EXPECT_EQ(valuesOf({"-a", "8"}), "640x480 8x full");
    EXPECT_EQ(valuesOf({"-a", "8", "-a"}), "640x480 8x full");
}

TEST_F(LaunchOptionsTest, AllNumbersComeFromOneStream) {
    struct Case {
        Arguments arguments;
        Outcome outcome;
    };
    const Case cases[] = {
        // What is no number stays in front of all that follow.
        {{"-w", "wide", "-h", "480", "-a", "8"}, {bothDefaults + twice, "1024x768 2x full"}},
        {{"-w", "640", "-h", "high", "-a", "8"},
         {std::string(defaultHeight) + twice, "640x768 2x full"}},
        {{"-w", "640", "-w", "wide", "-w", "800", "-h", "480"}, {defaultHeight, "640x768 full"}},
        // So does the rest of a number,
        {{"-w", "12abc", "-h", "480"}, {defaultHeight, "12x768 full"}},
        {{"-w", "640.5", "-h", "480"}, {defaultHeight, "640x768 full"}},
        {{"-w", "640x480", "-h", "480", "-a", "8"},
         {std::string(defaultHeight) + twice, "640x768 2x full"}},
        // unless it is a blank or begins a number.
        {{"-w", " 640 ", "-h", "480"}, {"", "640x480 full"}},
        {{"-w", "640 7", "-h", "80"}, {"", "640x780 full"}},
        {{"-w", "640-", "-h", "480"}, {"", "640x-480 full"}},
        // A sign alone and a number that is too large are eaten.
        {{"-w", "-", "-h", "480"}, {defaultWidth, "1024x480 full"}},
        {{"-w", "99999999999", "-h", "480"}, {defaultWidth, "1024x480 full"}},
        {{"-w", "", "-h", "480"}, {defaultWidth, "1024x480 full"}},
        {{"-w", "+640", "-h", "0480"}, {"", "640x480 full"}},
    };
    for (const Case& line : cases) {
        EXPECT_EQ(outcomeOf(line.arguments), line.outcome) << line.arguments[1];
    }
}

TEST_F(LaunchOptionsTest, AValueIsNoOptionInItsOwnScanButInTheOthers) {
    EXPECT_EQ(valuesOf({"-aa", "-ns"}), "640x480 full no sound [-ns]");
    EXPECT_EQ(valuesOf({"-aa", "-aa", "OSS"}), "640x480 full [-aa]");
    EXPECT_EQ(valuesOf({"-aa", "-a", "8"}), "640x480 8x full [-a]");
    EXPECT_EQ(outcomeOf({"-h", "480", "-w", "-w", "800"}), (Outcome{bothDefaults, "1024x768 full"}))
        << "the second -w is the value, and stays in the stream";
}

TEST_F(LaunchOptionsTest, HelpIsAllThatHappensWhereverItStands) {
    const Outcome help = {
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
        "--help:\t\t\t\tDisplay this help.\n",
        "ends with \n"};
    EXPECT_EQ(outcomeOf({"--help"}), help);
    EXPECT_EQ(outcomeOf({"-w", "640", "-win", "-a", "--help"}), help);
    EXPECT_EQ(outcomeOf({"-aa", "--help", "-ns"}), help) << "also as a value";
}
