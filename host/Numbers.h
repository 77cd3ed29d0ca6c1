// SPDX-License-Identifier: MIT
/// Numbers as text, independent of the locale: the grammar of std::from_chars, and nothing around it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace larynth {

/// A finite number in decimal notation; nothing for any other text, for nan, inf, and what does not fit a
/// double.
std::optional<double> ParseNumber(std::string_view text);

/// A whole number from `lowest` to `highest`, written without fraction and exponent.
std::optional<std::int64_t> ParseInteger(std::string_view text, std::int64_t lowest, std::int64_t highest);

/// The shortest text that reads back as the same number.
std::string ShortestText(double value);

/// `decimals` digits behind the point.
std::string FixedText(double value, int decimals);

}  // namespace larynth
