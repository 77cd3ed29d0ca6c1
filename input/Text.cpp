// SPDX-License-Identifier: MIT
#include "input/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace larynth {
namespace {

constexpr std::size_t kMostBytes = 1'000'000;  // in a line
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Length of a sequence by its first byte: the mask and value of the marking bits, the least code point that
// needs this length.
struct SequenceForm {
    unsigned mask, marking;
    std::size_t length;
    char32_t least;
};

constexpr std::array kForms{
    SequenceForm{0x80, 0x00, 1, 0x00},
    SequenceForm{0xE0, 0xC0, 2, 0x80},
    SequenceForm{0xF0, 0xE0, 3, 0x800},
    SequenceForm{0xF8, 0xF0, 4, 0x10000},
};

// C0, DEL, C1, and the separators of lines and paragraphs.
bool IsControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code <= 0x9F) || code == 0x2028 || code == 0x2029;
}

// Embeddings, overrides and isolates.
bool ChangesDirection(char32_t code) {
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string Escaped(std::string_view bytes) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
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

Character FirstCharacter(std::string_view text) {
    const unsigned first = static_cast<unsigned char>(text.front());
    const auto form = std::find_if(kForms.begin(), kForms.end(),
                                   [&](const SequenceForm& f) { return (first & f.mask) == f.marking; });
    if (form == kForms.end() || text.size() < form->length) return {};
    char32_t code = first & ~form->mask & 0xFFU;
    for (std::size_t i = 1; i < form->length; ++i) {
        if (!IsContinuation(text[i])) return {};
        code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < form->least || code > 0x10FFFF || surrogate) return {};
    return {form->length, code};
}

BadInput::BadInput(const TextPosition& where, const std::string& expected)
    : std::runtime_error(where.file + ":" + std::to_string(where.line) + ":" + std::to_string(where.column) +
                         ": expected " + expected),
      where_(where) {}

bool TextLines::Next() {
    ++number_;
    buffer_.resize(kMostBytes + 1);  // and a zero
    input_.getline(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    const auto count = static_cast<std::size_t>(input_.gcount());
    if (input_.eof() && count == 0) return false;
    if (input_.fail()) throw BadInput(At(1), "a line of at most " + std::to_string(kMostBytes) + " bytes");
    line_ = std::string_view(buffer_.data(), input_.eof() ? count : count - 1);
    if (number_ == 1 && line_.starts_with(kByteOrderMark)) line_.remove_prefix(kByteOrderMark.size());
    if (line_.ends_with('\r')) line_.remove_suffix(1);
    return true;
}

TextPosition TextLines::At(std::string_view part) const {
    const auto bytes = static_cast<std::size_t>(part.data() - line_.data());
    return At(static_cast<std::int64_t>(CharacterCount(line_.substr(0, bytes))) + 1);
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return text.substr(0, 0);
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string Printable(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const Character first = FirstCharacter(text);
        const std::string_view bytes = text.substr(0, std::max<std::size_t>(first.length, 1));
        const bool plain = first.length > 0 && !IsControl(first.code) && !ChangesDirection(first.code);
        shown += plain ? std::string(bytes) : Escaped(bytes);
        text.remove_prefix(bytes.size());
    }
    return shown;
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t kMost = 40;
    std::size_t cut = std::min(text.size(), kMost);
    while (cut > 0 && cut < text.size() && IsContinuation(text[cut])) --cut;
    return '"' + Printable(text.substr(0, cut)) + (text.size() > cut ? "…\"" : "\"");
}

std::size_t FindControl(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const Character character = FirstCharacter(text.substr(i));
        if (IsControl(character.code)) return i;
        i += std::max<std::size_t>(character.length, 1);
    }
    return std::string_view::npos;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = FirstCharacter(text).length;
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

std::optional<double> ParseSampleFreq(std::string_view text) {
    const auto value = ParseNumber(text);
    return value && *value >= std::numeric_limits<double>::min() ? value : std::nullopt;
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
