// SPDX-License-Identifier: Zlib
// The program that renders sound, and the shipped patches and tunes.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/wait.h>

#include "game/PlayMusic.h"
#include "sound/AudioSingleton.h"
#include "sound/PatchFile.h"
#include "sound/PitchFile.h"
#include "tools/Inspector.h"

static const std::filesystem::path patchFolder = std::filesystem::path(DATA) / "synthPatches";
static const std::filesystem::path pitchFolder = std::filesystem::path(DATA) / "pitches";

// --- the program

class RenderWavTest : public testing::Test {
protected:
    struct Outcome {
        int status = -1;
        std::string printed; // to both streams
    };

    RenderWavTest() {
        std::string pattern = testing::TempDir() + "RenderWavTest.XXXXXX";
        folder = mkdtemp(pattern.data());
    }

    ~RenderWavTest() override { std::filesystem::remove_all(folder); }

    // Runs the program in the test's folder.
    Outcome run(const std::string& arguments) const {
        const std::string command =
            "cd '" + folder.string() + "' && '" RENDER_WAV "' " + arguments + " 2>&1";
        std::FILE* const pipe = popen(command.c_str(), "r");
        Outcome outcome;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
            outcome.printed += static_cast<char>(c);
        }
        outcome.status = WEXITSTATUS(pclose(pipe));
        return outcome;
    }

    // The samples, interleaved, of what the program writes to a.wav.
    std::vector<float> render(const std::string& arguments) const {
        const Outcome outcome = run(arguments);
        if (outcome.status != 0) throw std::runtime_error(arguments + "\n" + outcome.printed);
        SF_INFO info = {};
        SNDFILE* const file = sf_open((folder / "a.wav").c_str(), SFM_READ, &info);
        if (!file) throw std::runtime_error(arguments + "\n" + sf_strerror(nullptr));
        EXPECT_EQ(info.samplerate, 44100);
        EXPECT_EQ(info.channels, 2);
        std::vector<float> samples(static_cast<std::size_t>(2 * info.frames));
        EXPECT_EQ(sf_readf_float(file, samples.data(), info.frames), info.frames);
        sf_close(file);
        return samples;
    }

    static std::string music(const std::string& rest) {
        return "music '" + (pitchFolder / "dusk.txt").string() + "' " + rest;
    }

    std::filesystem::path folder;
};

TEST_F(RenderWavTest, PrintsWhatIsWrongAndWritesNothing) {
    std::ofstream(folder / "count.inl") << std::string(22, '\n') << "static const int values = 15;";
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
        {"bom a.wav --seed 1", 2, "bom has no option --seed"},
        {"drum gong a.wav", 2, "unknown drum gong"},
        {music("0 a.wav"), 2, "BARS cannot be"},
        {"note count.inl 440 a.wav", 1, "not a patch: count.inl"},
        {"note short.inl 440 a.wav", 1, "only 1 of 16 values in short.inl"},
        {"music seven.txt 1 a.wav", 1, "note 7 has no pitch in seven.txt"},
        {"bom a.wav --patches .", 1, "no such file: ./SeqBass.inl"},
        {"drum kick /dev/full", 1, "cannot write /dev/full"},
    };
    for (const auto& [arguments, status, reason] : cases) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, status) << arguments;
        EXPECT_NE(outcome.printed.find(reason), std::string::npos) << outcome.printed;
        EXPECT_FALSE(std::filesystem::exists(folder / "a.wav")) << arguments;
    }
    EXPECT_EQ(run("--help").status, 0);
}

TEST_F(RenderWavTest, OptionsDecideTheMusic) {
    const std::vector<float> slow = render(music("2 a.wav --speed slow"));
    EXPECT_EQ(slow.size(), 2U * 176547) << "two bars";
    const std::vector<float> fast = render(music("2 a.wav"));
    EXPECT_GT(fast.size(), slow.size()) << "the high voice rings out";
    EXPECT_EQ(render(music("2 a.wav --seed 1 --speed 0.51")), fast);
    EXPECT_NE(render(music("2 a.wav --seed 2")), fast);
    const std::vector<float> rounded = render(music("2 a.wav --bits 16"));
    EXPECT_TRUE(std::ranges::equal(
        rounded, fast, [](float a, float b) { return std::fabs(a - b) <= 1.0f / 32767; }));
}

// --- the shipped patches and tunes

static std::vector<std::filesystem::path> tunes() {
    const std::filesystem::directory_iterator entries(pitchFolder);
    return {begin(entries), end(entries)};
}

TEST(ShippedPatches, AreCompleteAndPlayWithoutClicks) {
    for (const char* const name : AudioSingleton::patchFiles) {
        SimpleSynth voice;
        const PatchFile file(patchFolder / name, voice.parameterCount());
        ASSERT_EQ(file.getValues().size(), 16U) << name;
        for (const auto& [index, number] : file.getValues()) {
            voice.setParameter(voice.parameterName(index), number, true);
        }
        for (const float pitch : readPitches(pitchFolder / "neon.txt")) {
            voice.noteOn(pitch, 0);
            std::vector<float> samples; // and a last one, of silence
            while (voice.isActive()) {
                float frame[2] = {};
                voice.render(frame, 1);
                samples.push_back(frame[0]);
            }
            ASSERT_GT(samples.size(), 4410U) << name << " " << pitch;
            EXPECT_LT(std::fabs(samples.front()), 0.01f) << name << " " << pitch;
            EXPECT_LT(std::fabs(samples[samples.size() - 2]), 0.01f) << name << " " << pitch;
        }
    }
}

// Nine bars play all notes of the pad. art/measure_music.py measures longer times, and
// art/make_pitches.py checks the ranges of the notes.
TEST(ShippedTunes, AreCompleteDoNotClipAndAreEquallyLoud) {
    struct Listener : AudioSingleton::Callback {
        AudioSingleton& sound;
        PlayMusic music;
        explicit Listener(AudioSingleton& target) : sound(target) { music.start(sound); }
        void onBar() override { music.onBar(sound, 1); }
    };
    EXPECT_GE(tunes().size(), 8U);
    double quietest = 0;
    double loudest = -100;
    for (const std::filesystem::path& tune : tunes()) {
        const std::unique_ptr<AudioSingleton> sound = Inspector::makeSound();
        const PitchTable pitches = readPitches(tune);
        EXPECT_EQ(tune.extension(), ".txt");
        EXPECT_GT(*std::ranges::min_element(pitches), 0) << tune;
        sound->setPitches(pitches);
        Listener listener(*sound);
        sound->setCallback(&listener);
        std::vector<float> samples(2 * 9 * 88274);
        for (std::size_t at = 0; at + 512 <= samples.size(); at += 512) {
            sound->process(&samples[at], 256);
        }
        double power = 0;
        for (const float sample : samples) power += static_cast<double>(sample) * sample;
        const double level = 10 * std::log10(power / static_cast<double>(samples.size())); // dB
        EXPECT_LT(*std::ranges::max_element(samples), 0.9f) << tune;
        EXPECT_GT(*std::ranges::min_element(samples), -0.9f) << tune;
        quietest = std::min(quietest, level);
        loudest = std::max(loudest, level);
    }
    EXPECT_LT(loudest - quietest, 3);
    EXPECT_GT(quietest, -24);
}
