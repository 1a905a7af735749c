// SPDX-License-Identifier: Zlib
// What the sound costs. Prints medians, each with its limit, and fails beyond one. All times are
// the processor's for this program alone. The voices of a bank take turns with literal voices, one
// by one and sample by sample, some milliseconds each, so whatever else the machine does weighs on
// both alike.
#include <algorithm>
#include <array>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <string>

#include "bench/VoiceBanks.h"
#include "sound/AudioSingleton.h"
#include "sound/VoiceKernel.h"

static constexpr double fasterWithAvx2 = 7;      // times, a whole bank
static constexpr double fasterWithSse2 = 3.5;    // times, a whole bank
static constexpr double notSlower = 1;           // times, a voice or two
static constexpr double longestVoiceSample = 12; // ns, in a whole bank
static constexpr double fullSound = 11;          // times real time
static constexpr double longestBuilding = 20;    // ms, of tables, patches and pitches
static constexpr double tenVoices = 1.5;         // per cent of a core
static constexpr double thirtyVoices = 2.5;

static constexpr std::size_t bankVoices = 32;
static constexpr std::size_t rounds = 6;
static constexpr std::int32_t bufferFrames = 256;
static constexpr std::int32_t turnFrames = 16 * bufferFrames;
static constexpr double frameTime = 1e9 / 44100; // ns

// What was measured, and whether all of it keeps to its limits.
class Figures {
public:
    void least(const std::string& what, double figure, double limit) {
        print(what, figure, "at least", limit, figure >= limit);
    }
    void most(const std::string& what, double figure, double limit) {
        print(what, figure, "at most", limit, figure <= limit);
    }
    bool areGood() const { return good; }

private:
    void print(const std::string& what, double figure, const char* bound, double limit, bool kept) {
        std::cout << std::setw(32) << what << std::setw(8) << figure << ", " << bound << " "
                  << limit << (kept ? "" : ": FAILED") << std::endl;
        good = good && kept;
    }

    bool good = true;
};

template <typename Work>
static double timeOf(Work work) { // ns
    const auto now = [] {
        std::timespec time = {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return 1e9 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec);
    };
    const double begin = now();
    work();
    return now() - begin;
}

static double median(std::array<double, rounds> values) {
    std::sort(values.begin(), values.end());
    return (values[rounds / 2 - 1] + values[rounds / 2]) / 2;
}

// Calls render with a buffer until so many frames are done.
template <typename Render>
static void renderFrames(std::int32_t frames, std::int32_t buffer, Render render) {
    std::array<float, 1024> output = {};
    for (std::int32_t i = 0; i < frames; i += buffer) render(output.data(), buffer);
}

static void measureBank(Figures& figures, const std::string& level, std::size_t voices,
                        double leastRatio) {
    VoiceBanks bank(voices);
    std::array<double, rounds> program;
    std::array<double, rounds> ratio;
    for (std::size_t round = 0; round < rounds; ++round) {
        bank.start();
        double literalTime = 0;
        double programTime = 0;
        std::int32_t frames = 0;
        for (; frames + turnFrames <= VoiceBanks::noteFrames; frames += turnFrames) {
            literalTime += timeOf([&] {
                renderFrames(turnFrames, bufferFrames,
                             [&](auto... buffer) { bank.renderLiteral(buffer...); });
            });
            programTime += timeOf([&] {
                renderFrames(turnFrames, bufferFrames,
                             [&](auto... buffer) { bank.render(buffer...); });
            });
        }
        program[round] = programTime / (static_cast<double>(voices) * frames);
        ratio[round] = literalTime / programTime;
    }
    const std::string name = level + ", " + std::to_string(voices) + " voices: ";
    figures.least(name + "times faster", median(ratio), leastRatio);
    if (voices == bankVoices && level == "AVX2") {
        figures.most(name + "ns", median(program), longestVoiceSample);
    }
}

static void measureLevel(Figures& figures, VoiceKernel::Level level, const std::string& name,
                         double leastRatio) {
    if (level > VoiceStages::best()) {
        std::cout << name << ": skipped, this processor or this build has no such instructions\n";
        return;
    }
    VoiceKernel::setLevel(level);
    measureBank(figures, name, 1, notSlower);
    measureBank(figures, name, 2, notSlower);
    measureBank(figures, name, bankVoices, leastRatio);
}

// Processor time by the time that sounds.
template <typename Sound>
static double share(Sound& sound, std::int32_t buffer) {
    std::array<double, rounds> shares;
    for (double& one : shares) {
        sound.start();
        constexpr std::int32_t frames = VoiceBanks::noteFrames / 512 * 512;
        const double time = timeOf([&] {
            renderFrames(frames, buffer, [&](auto... output) { sound.render(output...); });
        });
        one = time / (frames * frameTime);
    }
    return median(shares);
}

// As a play spreads its notes: bass, pad and high voice.
struct Play {
    std::array<VoiceBanks, 3> banks;

    void start() {
        for (VoiceBanks& bank : banks) bank.start();
    }
    void render(float* output, std::int32_t frames) {
        for (VoiceBanks& bank : banks) bank.render(output, frames);
    }
};

static void measurePlay(Figures& figures) {
    Play ten = {{VoiceBanks(1), VoiceBanks(1), VoiceBanks(8)}};
    Play thirty = {{VoiceBanks(2), VoiceBanks(2), VoiceBanks(26)}};
    figures.most("10 voices: % of a core", 100 * share(ten, 512), tenVoices);
    figures.most("30 voices: % of a core", 100 * share(thirty, 512), thirtyVoices);
}

int main() {
    std::cout << std::fixed << std::setprecision(2);
    Figures figures;
    // Before anything else of the sound: the building is once in a program.
    const double building = timeOf([] { AudioSingleton::instance(); });
    figures.most("building the sound: ms", building / 1e6, longestBuilding);

    using Level = VoiceKernel::Level;
    measureLevel(figures, Level::scalar, "scalar", notSlower);
    measureLevel(figures, Level::sse2, "SSE2", fasterWithSse2);
    measureLevel(figures, Level::avx2, "AVX2", fasterWithAvx2);
    measurePlay(figures);
    FullSound sound;
    figures.least("160 voices, 4 drums: x real time", 1 / share(sound, bufferFrames),
                  VoiceStages::best() == Level::avx2 ? fullSound : 1);
    return figures.areGood() ? 0 : 1;
}
