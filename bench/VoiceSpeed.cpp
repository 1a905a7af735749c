// SPDX-License-Identifier: Zlib
// Measures what the sound costs. Prints medians, each with its limit, and fails if one is beyond
// its limit. All times are processor times of this program. The two ways to render a bank take
// turns of a few milliseconds, so that other work on the machine affects both alike.
#include <algorithm>
#include <array>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "sound/AudioSingleton.h"
#include "sound/ClapSynth.h"
#include "sound/CrashSynth.h"
#include "sound/HatSynth.h"
#include "sound/KickSynth.h"
#include "sound/VoiceKernel.h"

// Rendering a bank together compared with rendering its voices one by one: times faster.
static constexpr double fasterWithAvx2 = 7;   // 32 voices
static constexpr double fasterWithSse2 = 3.5; // 32 voices
static constexpr double notSlower = 1;        // two voices
static constexpr double mostPerSample = 12;   // ns a voice, of 32 with AVX2
static constexpr double fullSound = 11;       // times faster than real time, with AVX2
static constexpr double slowest = 50;         // per cent of the buffer, of 160 voices and 4 drums
static constexpr double longestBuilding = 20; // ms: tables, patches and pitches
static constexpr double tenVoices = 1.5;      // per cent of a core
static constexpr double thirtyVoices = 2.5;   // per cent of a core

static constexpr std::size_t rounds = 6;
static constexpr std::int32_t noteFrames = 88000; // a little less than a note
static constexpr std::int32_t bufferFrames = 256;
static constexpr std::int32_t turnFrames = 16 * bufferFrames;
static constexpr double frameTime = 1e9 / 44100; // ns

// Prints what was measured, and remembers whether all figures are within their limits.
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

// A bank in which some voices play notes of 2 seconds, each with a pitch of its own, on a patch
// that uses everything a voice has.
class Bank {
public:
    explicit Bank(std::size_t count) : playing(count) {}

    void start() {
        static constexpr std::pair<const char*, float> patch[] = {
            {"waveAmount", 0.4f},      {"filterCutoff", 0.3f}, {"filterRes", 0.5f},
            {"filterEnvAmount", 0.5f}, {"noteLength", 1.0f},   {"distGain", 2.0f},
            {"detunedSawAmount", 0.5f}};
        for (std::size_t i = 0; i < playing; ++i) {
            for (const auto& [name, value] : patch) voices[i].setParameter(name, value, true);
            voices[i].noteOn(100 + 7.3f * static_cast<float>(i), 0);
        }
    }

    void render(float* output, std::int32_t frames) {
        SimpleSynth::renderAll(voices, output, frames);
    }

private:
    std::size_t playing;
    std::array<SimpleSynth, SimpleSynth::bankSize> voices;
};

// Everything that can sound at once: five banks and four drums.
class FullSound {
public:
    void start() {
        for (Bank& bank : banks) bank.start();
    }

    void render(float* output, std::int32_t frames) {
        for (Bank& bank : banks) bank.render(output, frames);
        for (const auto& drum : drums) {
            if (!drum->isActive()) drum->trigger(true, 0, false);
            drum->render(output, frames);
        }
    }

private:
    std::array<Bank, 5> banks = {Bank(32), Bank(32), Bank(32), Bank(32), Bank(32)};
    std::array<std::unique_ptr<Synthesizer>, 4> drums = {
        std::make_unique<KickSynth>(), std::make_unique<ClapSynth>(), std::make_unique<HatSynth>(),
        std::make_unique<CrashSynth>()};
};

// The notes of a play: bass, pad and high voice.
struct Play {
    std::array<Bank, 3> banks;

    void start() {
        for (Bank& bank : banks) bank.start();
    }
    void render(float* output, std::int32_t frames) {
        for (Bank& bank : banks) bank.render(output, frames);
    }
};

template <typename Work>
static double timeOf(Work work) { // ns
    const auto now = [] {
        std::timespec time = {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return 1e9 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec);
    };
    const double start = now();
    work();
    return now() - start;
}

static double median(std::array<double, rounds> values) {
    std::sort(values.begin(), values.end());
    return (values[rounds / 2 - 1] + values[rounds / 2]) / 2;
}

template <typename Sound>
static double timeToRender(Sound& sound, std::int32_t frames, std::int32_t buffer) { // ns
    return timeOf([&] {
        std::array<float, 1024> output = {};
        for (std::int32_t i = 0; i < frames; i += buffer) sound.render(output.data(), buffer);
    });
}

static void measureBank(Figures& figures, VoiceKernel::Level level, const std::string& name,
                        std::size_t voices, double leastRatio) {
    Bank together(voices);
    Bank oneByOne(voices);
    std::array<double, rounds> perSample;
    std::array<double, rounds> ratio;
    for (std::size_t round = 0; round < rounds; ++round) {
        together.start();
        oneByOne.start();
        double timeTogether = 0;
        double timeOneByOne = 0;
        std::int32_t frames = 0;
        for (; frames + turnFrames <= noteFrames; frames += turnFrames) {
            VoiceKernel::setLevel(VoiceKernel::Level::scalar);
            timeOneByOne += timeToRender(oneByOne, turnFrames, bufferFrames);
            VoiceKernel::setLevel(level);
            timeTogether += timeToRender(together, turnFrames, bufferFrames);
        }
        perSample[round] = timeTogether / (static_cast<double>(voices) * frames);
        ratio[round] = timeOneByOne / timeTogether;
    }
    const std::string what = name + ", " + std::to_string(voices) + " voices: ";
    figures.least(what + "times faster", median(ratio), leastRatio);
    if (voices == SimpleSynth::bankSize && level == VoiceKernel::Level::avx2) {
        figures.most(what + "ns", median(perSample), mostPerSample);
    }
}

static void measureLevel(Figures& figures, VoiceKernel::Level level, const std::string& name,
                         double leastRatio) {
    if (level > VoiceStages::best()) {
        std::cout << name << ": skipped, not supported by this processor or this build\n";
        return;
    }
    measureBank(figures, level, name, 2, notSlower);
    measureBank(figures, level, name, SimpleSynth::bankSize, leastRatio);
}

// The share of a core that a sound needs in real time.
template <typename Sound>
static double shareOfACore(Sound& sound, std::int32_t buffer) {
    constexpr std::int32_t frames = noteFrames / 512 * 512;
    std::array<double, rounds> shares;
    for (double& share : shares) {
        sound.start();
        share = timeToRender(sound, frames, buffer) / (frames * frameTime);
    }
    return median(shares);
}

// The processor time of the slowest buffer but one in a thousand, in per cent of what the buffer
// lasts.
static double slowBuffer(FullSound& sound, std::int32_t frames) {
    std::vector<double> times;
    for (int round = 0; round < 20; ++round) {
        sound.start();
        for (std::int32_t played = 0; played + frames <= noteFrames; played += frames) {
            times.push_back(timeToRender(sound, frames, frames));
        }
    }
    const auto place = times.begin() + static_cast<std::ptrdiff_t>(times.size() * 999 / 1000);
    std::nth_element(times.begin(), place, times.end());
    return 100 * *place / (frames * frameTime);
}

int main() {
    std::cout << std::fixed << std::setprecision(2);
    Figures figures;
    // First, since the sound is built only once.
    const double building = timeOf([] { AudioSingleton::instance(); });
    figures.most("building the sound: ms", building / 1e6, longestBuilding);

    using Level = VoiceKernel::Level;
    measureLevel(figures, Level::sse2, "SSE2", fasterWithSse2);
    measureLevel(figures, Level::avx2, "AVX2", fasterWithAvx2);
    VoiceKernel::setLevel(VoiceStages::best());

    Play ten = {{Bank(1), Bank(1), Bank(8)}};
    Play thirty = {{Bank(2), Bank(2), Bank(26)}};
    figures.most("10 voices: % of a core", 100 * shareOfACore(ten, 512), tenVoices);
    figures.most("30 voices: % of a core", 100 * shareOfACore(thirty, 512), thirtyVoices);
    FullSound sound;
    figures.least("160 voices, 4 drums: x real time", 1 / shareOfACore(sound, bufferFrames),
                  VoiceStages::best() == Level::avx2 ? fullSound : 1);
    for (const std::int32_t frames : {64, 256, 512}) {
        figures.most("slow buffer of " + std::to_string(frames) + " frames: %",
                     slowBuffer(sound, frames), VoiceStages::best() == Level::avx2 ? slowest : 100);
    }
    return figures.areGood() ? 0 : 1;
}
