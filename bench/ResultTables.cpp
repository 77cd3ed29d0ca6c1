// SPDX-License-Identifier: MIT
#include "bench/ResultTables.h"

#include <algorithm>
#include <cstdio>
#include <ostream>

#include "bench/ComparisonBench.h"
#include "bench/ThreadsBench.h"

namespace larynth::bench {
namespace {

using Run = benchmark::BenchmarkReporter::Run;

/// " 12.34 |", or a dash for what was not measured.
std::string Field(double value, const char* unit = "") {
    char text[40];
    std::snprintf(text, sizeof text, " %.*f%s |", value < 100.0 ? 2 : 0, value, unit);
    return value > 0.0 ? text : " - |";
}

double Value(const benchmark::UserCounters& counters, const std::string& name) {
    const auto counter = counters.find(name);
    return counter != counters.end() ? counter->second.value : 0.0;
}

/// The median of the repetitions, or the only measurement.
bool IsResult(const Run& run) {
    return run.run_type == Run::RT_Aggregate ? run.aggregate_name == "median" : run.repetitions == 1;
}

bool IsVariation(const Run& run) { return run.aggregate_name == "cv"; }

/// How far the repetitions' ratios are apart: the largest standard deviation over mean of them.
double VariationOfRatios(const benchmark::UserCounters& variations) {
    double largest = 0.0;
    for (const RatioName& ratio : kRatios) largest = std::max(largest, Value(variations, ratio.name));
    return largest;
}

}  // namespace

void ResultTables::ReportRuns(const std::vector<Run>& runs) {
    std::vector<Run> shown;
    for (const Run& run : runs) {
        if (run.error_occurred || IsResult(run)) shown.push_back(run);
        if (!run.error_occurred) Note(run);
    }
    if (!shown.empty()) ConsoleReporter::ReportRuns(shown);
}

void ResultTables::Note(const Run& run) {
    const std::string& name = run.run_name.function_name;
    const bool compares = run.counters.contains("vectors");
    if (IsVariation(run) && compares) variations_[name] = run.counters;
    if (!IsResult(run)) return;
    if (compares) {
        medians_[name] = run.counters;
    } else if (const double rate = Value(run.counters, kRateOfEach); rate > 0.0) {
        threads_[{name, run.threads}] = 1e9 / rate;
    } else {
        others_[name] = run.GetAdjustedCPUTime() / GetTimeUnitMultiplier(run.time_unit) * 1e9;
    }
}

void ResultTables::Print() {
    ConsoleReporter::Finalize();
    if (!medians_.empty()) PrintComparisons();
    if (!threads_.empty()) PrintThreads();
    if (!others_.empty()) PrintOthers();
}

void ResultTables::PrintComparisons() {
    std::ostream& out = GetOutputStream();
    out << "\n| case | straight | interfaces | vectors | interfaces / vectors | straight / vectors | "
           "interfaces / straight | variation |\n| --- | --: | --: | --: | --: | --: | --: | --: |\n";
    for (const Case& one : cases_) {
        const auto found = medians_.find(one.name);
        if (found == medians_.end()) continue;
        const Counters& median = found->second;
        out << "| " << one.name << (one.CountsPackets() ? " (a packet) |" : " |");
        for (const char* path : {"straight", "interfaces", "vectors"}) out << Field(Value(median, path));
        for (const char* ratio : {"interfaces/vectors", "straight/vectors", "interfaces/straight"})
            out << Field(Value(median, ratio));
        out << Field(100.0 * VariationOfRatios(variations_[one.name]), " %") << "\n";
        const double flushing = Value(median, "straight_flushing");
        if (flushing == 0.0) continue;
        out << "| " << one.name << ", denormals off |" << Field(flushing) << " - |"
            << " - | - |" << Field(Value(median, "straight_flushing/vectors")) << " - | - |\n";
    }
}

void ResultTables::PrintThreads() {
    GetOutputStream() << "\n| path | threads | ns a sample of each |\n| --- | --: | --: |\n";
    for (const auto& [key, nanoseconds] : threads_) {
        GetOutputStream() << "| " << key.first << " | " << key.second << " |" << Field(nanoseconds) << "\n";
    }
}

void ResultTables::PrintOthers() {
    GetOutputStream() << "\n| what | ns |\n| --- | --: |\n";
    for (const auto& [name, nanoseconds] : others_) {
        GetOutputStream() << "| " << name << " |" << Field(nanoseconds) << "\n";
    }
}

}  // namespace larynth::bench
