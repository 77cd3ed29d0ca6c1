// SPDX-License-Identifier: MIT
#include "host/tables/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace larynth {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Length of a sequence by its first byte: the mask and value of the marking bits, the least code point that
// needs this length.
struct SequenceForm {
    unsigned mask, marking;
    std::size_t length;
    std::uint32_t least;
};

constexpr std::array kForms{
    SequenceForm{0x80, 0x00, 1, 0x00},
    SequenceForm{0xE0, 0xC0, 2, 0x80},
    SequenceForm{0xF0, 0xE0, 3, 0x800},
    SequenceForm{0xF8, 0xF0, 4, 0x10000},
};

// Length of the well-formed character at the beginning of the text; 0 when there is none.
std::size_t FirstCharacter(std::string_view text) {
    const unsigned first = static_cast<unsigned char>(text.front());
    const auto form = std::find_if(kForms.begin(), kForms.end(),
                                   [&](const SequenceForm& f) { return (first & f.mask) == f.marking; });
    if (form == kForms.end() || text.size() < form->length) return 0;
    std::uint32_t code = first & ~form->mask & 0xFFU;
    for (std::size_t i = 1; i < form->length; ++i) {
        if (!IsContinuation(text[i])) return 0;
        code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < form->least || code > 0x10FFFF || surrogate ? 0 : form->length;
}

template <class Number>
std::optional<Number> ParseAll(std::string_view text) {
    Number value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return value;
}

}  // namespace

bool TextLines::Next() {
    ++number_;
    if (!std::getline(input_, buffer_)) {
        if (input_.bad()) throw BadInput(fileName_ + ": cannot be read");
        return false;
    }
    line_ = buffer_;
    if (number_ == 1 && line_.starts_with(kByteOrderMark)) line_.remove_prefix(kByteOrderMark.size());
    if (line_.ends_with('\r')) line_.remove_suffix(1);
    return true;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t kMost = 40;
    std::string shown(text.substr(0, kMost));
    std::replace_if(
        shown.begin(), shown.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, '?');
    return '"' + shown + (text.size() > kMost ? "…\"" : "\"");
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = FirstCharacter(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::size_t CharacterCount(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return !IsContinuation(c); }));
}

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
