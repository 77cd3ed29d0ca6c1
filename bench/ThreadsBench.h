// SPDX-License-Identifier: MIT
#pragma once

#include "bench/Case.h"

namespace larynth::bench {

/// The counter of these benchmarks: samples a second of each thread.
inline constexpr char kRateOfEach[] = "rate_of_each";

/// Registers the case on every path, on one thread and on as many as there are cores, each with a synthesizer
/// of its own. The case must live as long as the benchmarks.
void RegisterThreads(const Case& one);

}  // namespace larynth::bench
