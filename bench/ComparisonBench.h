// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <vector>

#include "bench/Case.h"

namespace larynth::bench {

/// A counter of a comparison: how many times longer the first path takes than the second.
struct RatioName {
    const char* name;
    const char* longer;
    const char* shorter;
};

/// Beside these a comparison reports each path's nanoseconds a unit, under the path's name.
inline constexpr std::array<RatioName, 4> kRatios{{
    {"interfaces/vectors", "interfaces", "vectors"},
    {"straight/vectors", "straight", "vectors"},
    {"interfaces/straight", "interfaces", "straight"},
    {"straight_flushing/vectors", "straight_flushing", "vectors"},
}};

/// Registers a benchmark for every case, named after it: all paths in turns, so that whatever else the
/// machine does meets them alike. The cases must live as long as the benchmarks.
void RegisterComparisons(const std::vector<Case>& cases);

}  // namespace larynth::bench
