// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>
#include <cstdio>
#include <exception>
#include <vector>

#include <larynth/Speech.h>

#include "bench/Case.h"
#include "bench/ComparisonBench.h"
#include "bench/CountedRun.h"
#include "bench/LongRun.h"
#include "bench/ResultTables.h"
#include "bench/SampleCheck.h"
#include "bench/ThreadsBench.h"

namespace larynth::bench {
namespace {

/// Several repetitions, those of all benchmarks mixed: what else the machine does meets all of them alike.
/// Arguments of the user's come later and so win.
std::vector<char*> WithDefaults(int argc, char** argv) {
    static char repetitions[] = "--benchmark_repetitions=5";
    static char mixed[] = "--benchmark_enable_random_interleaving=true";
    static char time[] = "--benchmark_min_time=0.15";
    std::vector<char*> arguments = {argv[0], repetitions, mixed, time};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    return arguments;
}

/// Threads come last: once a process has started one, its noise is drawn with locked operations for good, and
/// the comparisons are of a process that has not.
void RunThreads(const std::vector<Case>& cases, ResultTables& tables) {
    benchmark::ClearRegisteredBenchmarks();
    for (const Case& one : cases) {
        if (one.name == "same_everything") RegisterThreads(one);
    }
    benchmark::RunSpecifiedBenchmarks(&tables);
}

int RunBenchmarks(int argc, char** argv, const std::vector<Case>& cases) {
    std::vector<char*> arguments = WithDefaults(argc, argv);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;

    if (const auto difference = FindDifference(cases)) {
        std::fprintf(stderr, "the paths do not give the same samples: %s\n", difference->c_str());
        return 1;
    }
    std::puts("all paths give the same samples");
    RegisterComparisons(cases);
    ResultTables tables(cases);
    benchmark::RunSpecifiedBenchmarks(&tables);
    RunThreads(cases, tables);
    tables.Print();
    return 0;
}

int Run(int argc, char** argv) {
    LoadModules();
    const std::vector<Case> cases = AllCases();
    if (const auto counted = ParseCountedRun(argc, argv)) {
        std::printf("%zu\n", MakeCountedRun(*counted, cases));
        return 0;
    }
    if (const auto samples = ParseLongRun(argc, argv)) {
        MakeLongRun(*samples, cases);
        return 0;
    }
    return RunBenchmarks(argc, argv, cases);
}

}  // namespace
}  // namespace larynth::bench

int main(int argc, char** argv) try {
    return larynth::bench::Run(argc, argv);
} catch (const std::exception& failure) {
    std::fprintf(stderr, "larynth_bench: %s\n", failure.what());
    return 2;
}
