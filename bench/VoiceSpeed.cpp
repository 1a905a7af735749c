// SPDX-License-Identifier: Zlib
// How much faster the voices of a bank are together than literal voices, one by one and sample by
// sample, at each level of the processor. Both take turns, some milliseconds each, so whatever else
// the machine does weighs on both alike. Prints the medians of the rounds and fails below the
// goals.
#include <algorithm>
#include <array>
#include <ctime>
#include <iomanip>
#include <iostream>

#include "bench/VoiceBanks.h"
#include "sound/VoiceKernel.h"

static constexpr double fasterWithAvx2 = 7;   // times, a whole bank
static constexpr double fasterWithSse2 = 3.5; // times, a whole bank
static constexpr double notSlower = 0.97;     // times, a voice or two; the rest is noise

static constexpr std::size_t bankVoices = 32;
static constexpr std::size_t rounds = 6;
static constexpr std::int32_t bufferFrames = 256;
static constexpr std::int32_t turnFrames = 16 * bufferFrames;

struct Medians {
    double literal; // ns a voice and sample
    double program;
    double ratio;
};

// Nanoseconds of the processor's time for this program.
static double processorTime() {
    std::timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e9 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec);
}

static double median(std::array<double, rounds> values) {
    std::sort(values.begin(), values.end());
    return (values[rounds / 2 - 1] + values[rounds / 2]) / 2;
}

static Medians measure(std::size_t voices) {
    VoiceBanks banks(voices);
    std::array<float, 2 * bufferFrames> buffer = {};
    std::array<double, rounds> literal;
    std::array<double, rounds> program;
    std::array<double, rounds> ratio;
    for (std::size_t round = 0; round < rounds; ++round) {
        banks.start();
        double literalTime = 0;
        double programTime = 0;
        std::int32_t frames = 0;
        for (; frames + turnFrames <= VoiceBanks::noteFrames; frames += turnFrames) {
            const double begin = processorTime();
            for (std::int32_t i = 0; i < turnFrames; i += bufferFrames) {
                banks.renderLiteral(buffer.data(), bufferFrames);
            }
            const double middle = processorTime();
            for (std::int32_t i = 0; i < turnFrames; i += bufferFrames) {
                banks.render(buffer.data(), bufferFrames);
            }
            literalTime += middle - begin;
            programTime += processorTime() - middle;
        }
        const double samples = static_cast<double>(voices) * frames;
        literal[round] = literalTime / samples;
        program[round] = programTime / samples;
        ratio[round] = literalTime / programTime;
    }
    return {median(literal), median(program), median(ratio)};
}

// Whether the goals are reached.
static bool proveLevel(VoiceKernel::Level level, const char* name, double goal) {
    if (level > VoiceStages::best()) {
        std::cout << name << ": skipped, this processor or this build has no such instructions\n";
        return true;
    }
    VoiceKernel::setLevel(level);
    bool reached = true;
    for (const std::size_t voices : {std::size_t{1}, std::size_t{2}, bankVoices}) {
        const Medians medians = measure(voices);
        const double least = voices == bankVoices ? goal : notSlower;
        reached = reached && medians.ratio >= least;
        std::cout << name << ", " << std::setw(2) << voices << " voices: literal "
                  << medians.literal << " ns, program " << medians.program << " ns, "
                  << medians.ratio << " times faster, at least " << least
                  << (medians.ratio >= least ? "" : ": TOO SLOW") << std::endl;
    }
    return reached;
}

int main() {
    std::cout << std::fixed << std::setprecision(2);
    bool reached = proveLevel(VoiceKernel::Level::scalar, "scalar", notSlower);
    reached = proveLevel(VoiceKernel::Level::sse2, "SSE2", fasterWithSse2) && reached;
    reached = proveLevel(VoiceKernel::Level::avx2, "AVX2", fasterWithAvx2) && reached;
    return reached ? 0 : 1;
}
