// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/Case.h"

namespace larynth::bench {

/// A run for a tool that counts instructions: `frames` frames of one case on one path, and nothing else.
struct CountedRun {
    std::string caseName, pathName;
    std::size_t frames = 0;
};

/// The run that --frames=N --case=NAME --path=NAME ask for, or none without --frames. Raises
/// std::runtime_error.
std::optional<CountedRun> ParseCountedRun(int argc, char** argv);

/// Makes it; the number of samples. What is to be counted happens inside the function RenderCounted. Raises
/// std::runtime_error for a case or a path that does not exist, naming those that do.
std::size_t MakeCountedRun(const CountedRun& run, const std::vector<Case>& cases);

}  // namespace larynth::bench
