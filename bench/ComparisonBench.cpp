// SPDX-License-Identifier: MIT
#include "bench/ComparisonBench.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <string>

#include "bench/Rendering.h"

namespace larynth::bench {
namespace {

/// Processor time of this thread in nanoseconds: what other programs take does not count.
double Now() {
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

/// One path and what it took in each round, in nanoseconds a unit.
struct Lane {
    std::string_view name;
    std::unique_ptr<Rendering> rendering;
    std::vector<double> rounds{};
};

std::vector<Lane> LanesOf(const Case& one) {
    std::vector<Lane> lanes;
    for (const auto& [path, name] : kPathNames) {
        if (Applies(path, one)) lanes.push_back({name, MakeRendering(path, one)});
    }
    return lanes;
}

/// Takes a tenth of a millisecond or more: reading the clock does not matter.
void RunOnce(Lane& lane, const Case& one) {
    lane.rendering->Prepare(nullptr);
    const double start = Now();
    lane.rendering->Render(one.count, nullptr);
    lane.rounds.push_back((Now() - start) / static_cast<double>(one.Units()));
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

const Lane* Find(const std::vector<Lane>& lanes, std::string_view name) {
    const auto lane = std::find_if(lanes.begin(), lanes.end(), [&](const Lane& l) { return l.name == name; });
    return lane != lanes.end() ? &*lane : nullptr;
}

/// The median of the rounds' ratios: each compares what ran within a few milliseconds.
double MedianRatio(const Lane& longer, const Lane& shorter) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < longer.rounds.size(); ++i) {
        ratios.push_back(longer.rounds[i] / shorter.rounds[i]);
    }
    return Median(std::move(ratios));
}

/// The time that Google Benchmark sees is that of a whole round; results are the counters.
void Compare(benchmark::State& state, const Case& one) {
    std::vector<Lane> lanes = LanesOf(one);
    std::size_t first = 0;
    for (auto _ : state) {
        for (std::size_t i = 0; i < lanes.size(); ++i) RunOnce(lanes[(first + i) % lanes.size()], one);
        ++first;  // no path always follows the same other one
    }
    for (const Lane& lane : lanes) state.counters[std::string(lane.name)] = Median(lane.rounds);
    for (const auto& [name, longer, shorter] : kRatios) {
        const Lane* const a = Find(lanes, longer);
        const Lane* const b = Find(lanes, shorter);
        if (a != nullptr && b != nullptr) state.counters[name] = MedianRatio(*a, *b);
    }
}

}  // namespace

void RegisterComparisons(const std::vector<Case>& cases) {
    for (const Case& one : cases) {
        const auto run = [&one](benchmark::State& state) { Compare(state, one); };
        benchmark::RegisterBenchmark(one.name.c_str(), run)->Unit(benchmark::kMicrosecond);
    }
}

}  // namespace larynth::bench
