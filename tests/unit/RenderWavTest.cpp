// SPDX-License-Identifier: Zlib
// The program that renders sound, and the shipped patches and tunes.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/wait.h>

static const std::filesystem::path pitchFolder = std::filesystem::path(DATA) / "pitches";

class RenderWavTest : public testing::Test {
protected:
    RenderWavTest() {
        std::string pattern = testing::TempDir() + "RenderWavTest.XXXXXX";
        folder = mkdtemp(pattern.data());
    }

    ~RenderWavTest() override { std::filesystem::remove_all(folder); }

    // Runs the program in the test's folder. Returns the status, and what it prints to both
    // streams.
    std::pair<int, std::string> run(const std::string& arguments) const {
        const std::string command =
            "cd '" + folder.string() + "' && '" RENDER_WAV "' " + arguments + " 2>&1";
        std::FILE* const pipe = popen(command.c_str(), "r");
        std::string printed;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
            printed += static_cast<char>(c);
        }
        return {WEXITSTATUS(pclose(pipe)), printed};
    }

    // The bytes of a.wav, which the program writes.
    std::string render(const std::string& arguments) const {
        const auto [status, printed] = run(arguments);
        EXPECT_EQ(status, 0) << arguments << printed;
        std::ifstream file(folder / "a.wav", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static std::string music(const std::string& rest) {
        return "music '" + (pitchFolder / "dusk.txt").string() + "' " + rest;
    }

    std::filesystem::path folder;
};

TEST_F(RenderWavTest, PrintsWhatIsWrongAndWritesNothing) {
    std::ofstream(folder / "short.inl")
        << std::string(22, '\n') << "static const int values = 16;\n\n\n0.5f,\n};\n";
    std::ofstream(folder / "seven.txt") << "440\n440\n440\n440\n440\n440\n440\n";
    const struct {
        std::string arguments;
        int status;
        std::string reason;
    } cases[] = {
        {"sing a.wav", 2, "unknown command sing"},
        {"bom a.wav --bits 24", 2, "--bits cannot be"},
        {"drum gong a.wav", 2, "unknown drum gong"},
        {music("0 a.wav"), 2, "BARS cannot be"},
        {"note seven.txt 440 a.wav", 1,
         "not a patch: seven.txt: line 23 needs the number 16 in column 26, and lines 26 "
         "on need as many values"},
        {"note short.inl 440 a.wav", 1,
         "short.inl, line 27: no number; lines 26 to 41 need one each"},
        {"music seven.txt 1 a.wav", 1, "note 7 has no pitch in seven.txt"},
        {"drum kick /dev/full", 1, "cannot write /dev/full"},
    };
    for (const auto& [arguments, status, reason] : cases) {
        const auto [ended, printed] = run(arguments);
        EXPECT_EQ(ended, status) << arguments;
        EXPECT_NE(printed.find(reason), std::string::npos) << printed;
        EXPECT_FALSE(std::filesystem::exists(folder / "a.wav")) << arguments;
    }
}

TEST_F(RenderWavTest, OptionsDecideTheMusic) {
    const std::string slow = render(music("2 a.wav --speed slow"));
    EXPECT_EQ(slow.substr(22, 6), std::string("\2\0\x44\xAC\0\0", 6)) << "stereo, 44100 hertz";
    EXPECT_NEAR(static_cast<double>(slow.size()), 8 * 176547, 100) << "two bars";
    const std::string fast = render(music("2 a.wav"));
    EXPECT_GT(fast.size(), slow.size()) << "the high voice rings out";
    EXPECT_EQ(render(music("2 a.wav --seed 1 --speed 0.51")), fast);
    EXPECT_NE(render(music("2 a.wav --seed 2")), fast);
    EXPECT_LT(render(music("2 a.wav --bits 16")).size(), fast.size() / 2 + 100);
}

// art/measure_music.py measures more, and art/make_pitches.py checks the ranges of the notes.
TEST_F(RenderWavTest, TheShippedTunesAreCompleteAndDoNotClip) {
    int tunes = 0;
    for (const auto& tune : std::filesystem::directory_iterator(pitchFolder)) {
        EXPECT_EQ(tune.path().extension(), ".txt");
        const auto [status, printed] = run("music '" + tune.path().string() + "' 9 a.wav");
        ASSERT_EQ(status, 0) << printed;
        EXPECT_LT(std::stod(printed.substr(printed.rfind(' '))), 0.9) << tune;
        ++tunes;
    }
    EXPECT_GE(tunes, 8);
}
