// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "bench/Case.h"

namespace larynth::bench {

/// Shows the median of every benchmark as it is done, and at the end all results as tables in Markdown:
/// cases with the paths side by side, threads, and the rest.
class ResultTables final : public benchmark::ConsoleReporter {
  public:
    /// The first table has the cases' order. They must outlive the tables.
    explicit ResultTables(const std::vector<Case>& cases) : cases_(cases) {}

    void ReportRuns(const std::vector<Run>& runs) override;
    /// The tables, once all has been run.
    void Print();

  private:
    using Counters = benchmark::UserCounters;

    void Note(const Run& run);
    void PrintComparisons();
    void PrintThreads();
    void PrintOthers();

    const std::vector<Case>& cases_;
    std::map<std::string, Counters> medians_, variations_;            // of comparisons, by case
    std::map<std::pair<std::string, std::int64_t>, double> threads_;  // ns a sample, by path and threads
    std::map<std::string, double> others_;                            // ns
};

}  // namespace larynth::bench
