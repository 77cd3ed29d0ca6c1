// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/Case.h"

namespace larynth::bench {

/// Renders every case on every path twice over, with the noise seeded alike, and compares sample for sample
/// with the way through the interfaces. The first difference in words, or a case without any sound; nothing
/// when all is well.
std::optional<std::string> FindDifference(const std::vector<Case>& cases);

}  // namespace larynth::bench
