// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larynth {

/// An amount of money, a measure, a date, a time, a range, a fraction, a version, … in words; nothing for any
/// other text. `next` is the word behind it, in which a multiplier or a unit may stand; `usedNext` tells that
/// it is said.
std::optional<std::string> SayFigures(std::string_view text, std::string_view next, bool& usedNext);

}  // namespace larynth
