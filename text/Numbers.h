// SPDX-License-Identifier: MIT
/// Numbers in words, and numbers at the beginning of a text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larynth {

// Digits alone are expected here; of too many, each is said.
std::string Cardinal(std::string_view digits);
std::string Ordinal(std::string_view digits);
std::string Year(std::string_view digits);     ///< Four digits in pairs.
std::string EachDigit(std::string_view text);  ///< Digits one by one; other characters are left out.

std::string BelowHundred(int n);

/// Of digits, up to 999,999,999; -1 for any other text.
int Value(std::string_view digits);

/// Puts a word, or several, behind others; an empty one is none.
void AddWord(std::string& words, std::string_view word);

/// Takes the digits off the beginning of a text.
std::string_view TakeDigits(std::string_view& text);

struct Number {
    bool positive = false;  // with a sign
    bool negative = false;
    bool grouped = false;  // with commas
    std::string whole;
    std::string fraction;
    std::string_view vulgar;  // "½" in words

    bool IsOne() const { return whole == "1" && fraction.empty() && vulgar.empty(); }
    bool IsPlain() const { return !positive && !negative && !grouped && fraction.empty() && vulgar.empty(); }
};

/// Takes a number off the beginning of a text, with its sign, commas between thousands, decimals and "½";
/// nothing, and the text unchanged, where none stands.
std::optional<Number> TakeNumber(std::string_view& text);

std::string Say(const Number& number);

/// Plain integers are left as they are: whether one is a year, a code or a count is told from its neighbours
/// later.
std::string SayOrLeave(const Number& number);

}  // namespace larynth
