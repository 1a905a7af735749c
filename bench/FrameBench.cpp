// SPDX-License-Identifier: Zlib
// What the game itself costs, apart from GL: a frame in a small and in a huge level, and the
// runner's step alone.
#include <benchmark/benchmark.h>

#include <iostream>

#include "bench/FrameScene.h"
#include "bench/GlStandIn.h"
#include "game/Player.h"

static void frame(benchmark::State& state) {
    FrameScene scene(static_cast<std::uint32_t>(state.range(0)),
                     static_cast<std::uint32_t>(state.range(1)));
    scene.runFrames(10); // make all textures and fonts
    const std::uint64_t calls = GlStandIn::calls;
    for (auto _ : state) scene.runFrame();
    state.counters["GlCalls"] = benchmark::Counter(static_cast<double>(GlStandIn::calls - calls),
                                                   benchmark::Counter::kAvgIterations);
}
// The runner must not reach the small level's border.
BENCHMARK(frame)->Args({512, 1024})->Args({8192, 8192})->Iterations(1000)->Repetitions(5);

static void runnerStep(benchmark::State& state) {
    const LevelMap level = FrameScene::makeLevel(512, 1024);
    Player player({255.5f, 400});
    std::uint32_t step = 0;
    for (auto _ : state) {
        if (step % 1000 == 0) player = Player({255.5f, 400});
        if (step % 25 == 0) player.requestKick();
        player.update({false, step % 180 < 90, step % 180 >= 90, false}, level);
        ++step;
    }
    benchmark::DoNotOptimize(player.position());
}
BENCHMARK(runnerStep);

int main(int argc, char* argv[]) {
    benchmark::Initialize(&argc, argv);
    // The drawer's report goes to standard output too.
    benchmark::ConsoleReporter reporter(benchmark::ConsoleReporter::OO_Tabular);
    std::ostream table(std::cout.rdbuf());
    reporter.SetOutputStream(&table);
    reporter.SetErrorStream(&std::cerr);
    std::cout.setstate(std::ios::failbit);
    benchmark::RunSpecifiedBenchmarks(&reporter);
}
