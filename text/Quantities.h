// SPDX-License-Identifier: MIT
/// Money and measures in words.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larynth {

/// "$3.50", "5€", "$5M", "$3.5" in front of "million"; nothing for any other text. `next` is the word behind
/// it; `usedNext` is set where that is said, too.
std::optional<std::string> SayCurrency(std::string_view text, std::string_view next, bool& usedNext);

/// "5km", "20°C", "50%", "3" in front of "kg"; the same.
std::optional<std::string> SayMeasure(std::string_view text, std::string_view next, bool& usedNext);

}  // namespace larynth
