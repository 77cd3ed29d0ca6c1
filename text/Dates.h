// SPDX-License-Identifier: MIT
/// Dates and times in words.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larynth {

/// A date in figures, whose order is given by the letters y, m and d; with any other order it is found out.
/// Nothing for what is no date.
std::optional<std::string> SayDate(std::string_view text, std::string_view order);

/// "3:45", "10:30:15", "3:05pm"; nothing for what is no time.
std::optional<std::string> SayTime(std::string_view text);

}  // namespace larynth
