// SPDX-License-Identifier: Zlib
// The listening tool as a program, and by it the patches and tunes that are shipped.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/wait.h>

#include "sound/PatchFile.h"
#include "sound/PitchFile.h"
#include "sound/SimpleSynth.h"

static constexpr const char* tool = RENDER_WAV;
static const std::filesystem::path patchFolder = std::filesystem::path(DATA) / "synthPatches";
static const std::filesystem::path pitchFolder = std::filesystem::path(DATA) / "pitches";
static constexpr const char* patches[] = {"SeqBass.inl", "SeqPad.inl", "SeqHi.inl", "SeqDuck.inl",
                                          "Bom.inl"};
static constexpr float bassOctave = 0.25f; // of the shipped patches
static constexpr float padOctave = 2;
static constexpr float highOctave = 4;

class RenderWavTest : public testing::Test {
protected:
    struct Outcome {
        int status = -1;
        std::string printed; // both streams
    };

    RenderWavTest() {
        std::string pattern = testing::TempDir() + "RenderWavTest.XXXXXX";
        folder = mkdtemp(pattern.data());
    }

    ~RenderWavTest() override { std::filesystem::remove_all(folder); }

    // Runs the tool in the test's folder.
    Outcome run(const std::string& arguments) const {
        const std::string command =
            "cd '" + folder.string() + "' && '" + tool + "' " + arguments + " 2>&1";
        std::FILE* const pipe = popen(command.c_str(), "r");
        Outcome outcome;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
            outcome.printed += static_cast<char>(c);
        }
        outcome.status = WEXITSTATUS(pclose(pipe));
        return outcome;
    }

    // The left channel of what the tool writes to a.wav; the right one has to be equal.
    std::vector<float> render(const std::string& arguments) const {
        const Outcome outcome = run(arguments);
        if (outcome.status != 0) throw std::runtime_error(arguments + "\n" + outcome.printed);
        SF_INFO info = {};
        SNDFILE* const file = sf_open((folder / "a.wav").c_str(), SFM_READ, &info);
        if (!file) throw std::runtime_error(arguments + "\n" + sf_strerror(nullptr));
        EXPECT_EQ(info.samplerate, 44100);
        EXPECT_EQ(info.channels, 2);
        std::vector<float> both(static_cast<std::size_t>(2 * info.frames));
        EXPECT_EQ(sf_readf_float(file, both.data(), info.frames), info.frames);
        sf_close(file);
        std::vector<float> left;
        for (std::size_t i = 0; i < both.size(); i += 2) {
            EXPECT_EQ(both[i], both[i + 1]);
            left.push_back(both[i]);
        }
        return left;
    }

    std::string bytes(const std::string& name) const {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static std::string quoted(const std::filesystem::path& path) {
        return std::string(1, '\'').append(path.string()).append(1, '\'');
    }

    static std::string music(const std::string& rest, const std::string& tune = "dusk.txt") {
        return "music " + quoted(pitchFolder / tune) + " " + rest;
    }

    static std::vector<std::string> tunes() {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(pitchFolder)) {
            names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    static float peak(const std::vector<float>& samples) {
        float highest = 0;
        for (const float sample : samples) highest = std::max(highest, std::fabs(sample));
        return highest;
    }

    // In dB.
    static double level(const std::vector<float>& samples) {
        double sum = 0;
        for (const float sample : samples) sum += static_cast<double>(sample) * sample;
        return 10 * std::log10(sum / static_cast<double>(samples.size()));
    }

    std::filesystem::path folder;
};

TEST_F(RenderWavTest, SaysWhatIsWrongAndWritesNothing) {
    std::ofstream(folder / "count.inl") << std::string(22, '\n') << "static const int values = 15;";
    std::ofstream(folder / "short.inl")
        << std::string(22, '\n') << "static const int values = 16;\n\n\n0.5f,\n};\n";
    std::ofstream(folder / "seven.txt") << "440\n440\n440\n440\n440\n440\n440\n";
    const struct {
        std::string arguments;
        int status;
        std::string reason;
    } cases[] = {
        {"", 2, "no command"},
        {"sing a.wav", 2, "unknown command sing"},
        {"bom", 2, "bom has 1 words"},
        {"bom a.wav --loud", 2, "unknown option --loud"},
        {"bom a.wav --bits", 2, "--bits needs a value"},
        {"bom a.wav --bits 24", 2, "--bits cannot be"},
        {"bom a.wav --buffer 0", 2, "--buffer cannot be"},
        {"bom a.wav --seed 1", 2, "bom has no option --seed"},
        {"drum gong a.wav", 2, "unknown drum gong"},
        {"drum hat a.wav --seed -1", 2, "--seed cannot be"},
        {"note x.inl nan a.wav", 2, "HERTZ cannot be"},
        {music("2x a.wav"), 2, "BARS cannot be"},
        {music("0 a.wav"), 2, "BARS cannot be"},
        {music("1 a.wav --speed fastest"), 2, "--speed cannot be"},
        {"note x.inl 440 a.wav", 1, "no file x.inl"},
        {"note . 440 a.wav", 1, "no file ."},
        {"note count.inl 440 a.wav", 1, "no patch: count.inl"},
        {"note short.inl 440 a.wav", 1, "only 1 values in short.inl"},
        {"music seven.txt 1 a.wav", 1, "note 7 has no pitch in seven.txt"},
        {"bom a.wav --patches .", 1, "no file ./SeqBass.inl"},
        {"drum kick nowhere/a.wav", 1, "cannot write nowhere/a.wav"},
        {"drum kick /dev/full", 1, "cannot write /dev/full"},
    };
    for (const auto& wrong : cases) {
        const Outcome outcome = run(wrong.arguments);
        EXPECT_EQ(outcome.status, wrong.status) << wrong.arguments;
        EXPECT_NE(outcome.printed.find(wrong.reason), std::string::npos) << wrong.arguments << "\n"
                                                                         << outcome.printed;
        EXPECT_FALSE(std::filesystem::exists(folder / "a.wav")) << wrong.arguments;
    }
    EXPECT_EQ(run("--help").status, 0);
}

TEST_F(RenderWavTest, BarsBeginOnTheirSamples) {
    // Slow, no note reaches into the next bar, so the file ends with the last one.
    constexpr std::size_t bars[] = {88274, 176547, 264821};
    for (std::size_t i = 0; i < std::size(bars); ++i) {
        EXPECT_EQ(render(music(std::to_string(i + 1) + " a.wav --speed slow")).size(), bars[i]);
    }
    // Fast, the high voice rings out, and the piece before that is the same. (A voice begins on
    // the sample before its step.)
    const std::vector<float> two = render(music("2 a.wav"));
    const std::vector<float> three = render(music("3 a.wav"));
    EXPECT_GT(two.size(), bars[1]);
    EXPECT_LT(two.size(), bars[1] + 44100);
    EXPECT_NE(two.back(), 0);
    EXPECT_TRUE(std::equal(two.begin(), two.begin() + bars[1] - 1, three.begin()));
}

TEST_F(RenderWavTest, TheSpeedAtABarsBeginAndTheSeedDecide) {
    const std::vector<float> slow = render(music("2 a.wav --speed slow"));
    EXPECT_EQ(render(music("2 a.wav --speed 0.5")), slow);
    const std::vector<float> fast = render(music("2 a.wav --speed 0.51"));
    EXPECT_NE(fast, slow);
    EXPECT_EQ(render(music("2 a.wav")), fast);
    const std::string once = bytes("a.wav");
    render(music("2 a.wav --seed 1"));
    EXPECT_EQ(bytes("a.wav"), once); // the file holds no time of day
    EXPECT_NE(render(music("2 a.wav --seed 2")), fast);
    EXPECT_NE(render(music("2 a.wav", "dawn.txt")), fast);
}

TEST_F(RenderWavTest, SixteenBitsAgreeWithFloats) {
    for (const std::string& piece : {music("1 a.wav"), std::string("drum kick a.wav"),
                                     std::string("drum crash --alternate a.wav")}) {
        const std::vector<float> exact = render(piece);
        const std::vector<float> whole = render(piece + " --bits 16");
        ASSERT_EQ(whole.size(), exact.size());
        for (std::size_t i = 0; i < exact.size(); ++i) {
            ASSERT_NEAR(whole[i], exact[i], 1.0 / 32767) << i;
        }
    }
}

TEST_F(RenderWavTest, ShippedPatchesSetEveryParameterWithinItsRange) {
    const SimpleSynth synth;
    for (const char* const name : patches) {
        const PatchFile file(patchFolder / name, synth.parameterCount());
        ASSERT_EQ(file.getValues().size(), 16U) << name;
        SimpleSynth voice;
        for (const PatchFile::Value& value : file.getValues()) {
            const std::string parameter = voice.parameterName(value.index);
            voice.setParameter(parameter, value.number, true);
            EXPECT_EQ(voice.parameter(value.index), value.number) << name << " " << parameter;
            float least = 0;
            float most = 1;
            if (parameter == "filterEnvAmount") least = -1;
            if (parameter == "noteLength") least = 0.05f;
            if (parameter == "octave") least = 0.25f;
            if (parameter == "distGain") least = 1;
            if (parameter == "distGain" || parameter == "octave") most = 4;
            EXPECT_GE(value.number, least) << name << " " << parameter;
            EXPECT_LE(value.number, most) << name << " " << parameter;
        }
    }
}

TEST_F(RenderWavTest, ShippedPitchesLieWithinTheRangeOfTheBanks) {
    EXPECT_GE(tunes().size(), 8U);
    for (const std::string& tune : tunes()) {
        EXPECT_EQ(std::filesystem::path(tune).extension(), ".txt");
        EXPECT_NE(tune[0], '.');
        std::ifstream file(pitchFolder / tune);
        const std::vector<float> twice{std::istream_iterator<float>(file), {}};
        EXPECT_TRUE(file.eof()) << tune;
        ASSERT_EQ(twice.size(), 8U) << tune;
        const PitchTable pitches = readPitches(pitchFolder / tune);
        for (std::size_t note = 0; note < pitches.size(); ++note) {
            EXPECT_EQ(pitches[note] * 2, twice[note]) << tune;
            EXPECT_GT(pitches[note], 0) << tune;
            EXPECT_LT(pitches[note] * highOctave, 1540) << tune;
            EXPECT_TRUE(note < 2 || pitches[note] * padOctave < 600) << tune;
        }
        // The bass can be heard, the pad stays below the high voice's brightness, and the high
        // voice keeps overtones: a saw above 1540 hertz has none.
        EXPECT_GT(std::min(pitches[6], pitches[7]) * bassOctave, 32) << tune;
        EXPECT_LT(std::max(pitches[6], pitches[7]) * bassOctave, 82) << tune;
    }
}

TEST_F(RenderWavTest, NotesBeginAndEndWithoutAClick) {
    for (const char* const patch : patches) {
        for (const float pitch : readPitches(pitchFolder / "neon.txt")) {
            std::ostringstream order;
            order << "note " << quoted(patchFolder / patch) << " " << pitch << " a.wav";
            const std::vector<float> note = render(order.str());
            ASSERT_GT(note.size(), 4410U) << order.str();
            EXPECT_LT(std::fabs(note.front()), 0.01f) << order.str();
            EXPECT_LT(std::fabs(note.back()), 0.01f) << order.str();
        }
    }
}

// A minute at full speed; what stays below over longer times art/measure_music.py shows.
TEST_F(RenderWavTest, NoTuneClipsAndAllAreAboutAsLoud) {
    double quietest = 0;
    double loudest = -100;
    for (const std::string& tune : tunes()) {
        const std::vector<float> samples = render(music("30 a.wav", tune));
        EXPECT_LT(peak(samples), 0.9f) << tune;
        quietest = std::min(quietest, level(samples));
        loudest = std::max(loudest, level(samples));
    }
    EXPECT_LT(loudest - quietest, 3);
    EXPECT_GT(quietest, -24);
}
