// SPDX-License-Identifier: Zlib
#include <benchmark/benchmark.h>

#include <array>

#include "bench/VoiceBanks.h"
#include "sound/VoiceKernel.h"

static constexpr std::int32_t bufferFrames = 256;

// Calls render for buffer after buffer of notes that never end.
template <typename Render>
static void renderBuffers(benchmark::State& state, VoiceBanks& banks, Render render) {
    std::array<float, 2 * bufferFrames> buffer = {};
    std::int32_t frames = VoiceBanks::noteFrames;
    for (auto _ : state) {
        if (frames + bufferFrames > VoiceBanks::noteFrames) {
            state.PauseTiming();
            banks.start();
            frames = 0;
            state.ResumeTiming();
        }
        render(buffer.data());
        frames += bufferFrames;
    }
}

static void countSamples(benchmark::State& state, std::size_t voices) {
    using benchmark::Counter;
    const double samples = static_cast<double>(voices) * bufferFrames;
    state.counters["voice-sample"] =
        Counter(samples, Counter::kIsIterationInvariantRate | Counter::kInvert);
}

static void literalVoices(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    VoiceBanks banks(count);
    renderBuffers(state, banks, [&](float* output) { banks.renderLiteral(output, bufferFrames); });
    countSamples(state, count);
}

// A bank of so many voices; second, the level of the processor.
static void bankOfVoices(benchmark::State& state) {
    const auto level = static_cast<VoiceKernel::Level>(state.range(1));
    if (level > VoiceStages::best()) {
        state.SkipWithError("this processor or this build has no such instructions");
        return;
    }
    VoiceKernel::setLevel(level);
    const auto count = static_cast<std::size_t>(state.range(0));
    VoiceBanks banks(count);
    renderBuffers(state, banks, [&](float* output) { banks.render(output, bufferFrames); });
    countSamples(state, count);
    VoiceKernel::setLevel(VoiceStages::best());
}

BENCHMARK(literalVoices)->Arg(1)->Arg(32);
BENCHMARK(bankOfVoices)->ArgNames({"voices", "level"})->ArgsProduct({{1, 2, 8, 32}, {0, 1, 2}});
