// SPDX-License-Identifier: MIT
#include "host/Numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace larynth {
namespace {

template <class Number>
std::optional<Number> ParseAll(std::string_view text) {
    Number value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return value;
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
    const auto value = ParseAll<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<std::int64_t> ParseInteger(std::string_view text, std::int64_t lowest, std::int64_t highest) {
    const auto value = ParseAll<std::int64_t>(text);
    return value && *value >= lowest && *value <= highest ? value : std::nullopt;
}

std::string ShortestText(double value) {
    std::array<char, 32> text;
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc{} ? std::string(text.data(), end) : std::string();
}

std::string FixedText(double value, int decimals) {
    // Room for the longest double in fixed notation: 309 digits, sign, point and decimals.
    std::string text(std::numeric_limits<double>::max_exponent10 + 4 + static_cast<std::size_t>(decimals),
                     '\0');
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    text.resize(error == std::errc{} ? static_cast<std::size_t>(end - text.data()) : 0);
    return text;
}

}  // namespace larynth
