// SPDX-License-Identifier: MIT
/// Numbers, and what is written with them, in words.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace larynth {

// Digits alone are expected here; of too many, each is said.
std::string Cardinal(std::string_view digits);
std::string Ordinal(std::string_view digits);
std::string Year(std::string_view digits);     ///< Four digits in pairs.
std::string EachDigit(std::string_view text);  ///< Digits one by one; other characters are left out.

/// An amount of money, a measure, a date, a time, a range, a fraction, a version, … in words; nothing for any
/// other text. `next` is the word behind it, in which a multiplier or a unit may stand; `usedNext` tells that
/// it is said.
std::optional<std::string> SayFigures(std::string_view text, std::string_view next, bool& usedNext);

/// A date in figures, whose order is given by the letters y, m and d; an empty order: found out.
std::optional<std::string> SayDate(std::string_view text, std::string_view order);
std::optional<std::string> SayTime(std::string_view text);

}  // namespace larynth
