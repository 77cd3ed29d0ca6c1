// SPDX-License-Identifier: MIT
#include "bench/ThreadsBench.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <thread>

#include "bench/Rendering.h"

namespace larynth::bench {
namespace {

void RenderOnThread(benchmark::State& state, const Case& one, Path path) {
    const auto rendering = MakeRendering(path, one);
    for (auto _ : state) rendering->Render(one.count, nullptr);
    const auto units = static_cast<double>(state.iterations()) * static_cast<double>(one.Units());
    state.counters[kRateOfEach] = benchmark::Counter(units, benchmark::Counter::kAvgThreadsRate);
}

}  // namespace

void RegisterThreads(const Case& one) {
    const int cores = std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
    for (const auto& [path, name] : kPathNames) {
        if (!Applies(path, one)) continue;
        const auto run = [&one, path = path](benchmark::State& state) { RenderOnThread(state, one, path); };
        auto* const bench = benchmark::RegisterBenchmark(("threads/" + std::string(name)).c_str(), run);
        bench->UseRealTime()->Unit(benchmark::kMicrosecond)->Threads(1);
        if (cores > 1) bench->Threads(cores);
    }
}

}  // namespace larynth::bench
