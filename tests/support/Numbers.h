// SPDX-License-Identifier: MIT
#pragma once

#include <limits>
#include <vector>

namespace larynth {

using Samples = std::vector<double>;

inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace larynth
