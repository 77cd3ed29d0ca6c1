// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "bench/Case.h"

namespace larynth::bench {

/// The number of samples that --long=N asks for, or none. Raises std::runtime_error.
std::optional<long long> ParseLongRun(int argc, char** argv);

/// Renders so many samples in one synthesizer, with flutter and without, in vectors, and prints what a sample
/// costs and what memory the process holds after each tenth: both are to stay what they are.
void MakeLongRun(long long samples, const std::vector<Case>& cases);

}  // namespace larynth::bench
