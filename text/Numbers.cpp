// SPDX-License-Identifier: MIT
#include "text/Numbers.h"

#include <algorithm>
#include <array>

#include "input/Text.h"
#include "text/Characters.h"

namespace larynth {
namespace {

constexpr std::array<std::string_view, 20> kBelowTwenty{
    "zero",     "one",     "two",     "three",     "four",     "five",    "six",
    "seven",    "eight",   "nine",    "ten",       "eleven",   "twelve",  "thirteen",
    "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};
constexpr std::array<std::string_view, 10> kTens{"",      "",      "twenty",  "thirty", "forty",
                                                 "fifty", "sixty", "seventy", "eighty", "ninety"};
constexpr std::array<std::string_view, 5> kGroups{"", "thousand", "million", "billion", "trillion"};
std::string BelowThousand(int n) {
    std::string words;
    if (n >= 100) words = std::string(kBelowTwenty[static_cast<std::size_t>(n / 100)]) + " hundred";
    if (n % 100 > 0 || n == 0) AddWord(words, BelowHundred(n % 100));
    return words;
}

bool AreDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

// "12,345,678" without the commas.
std::string TakeGrouped(std::string_view& text) {
    std::string digits(TakeDigits(text));
    if (digits.empty() || digits.size() > 3) return digits;
    while (text.size() >= 4 && text[0] == ',' && AreDigits(text.substr(1, 3)) &&
           (text.size() == 4 || !IsDigit(text[4]))) {
        digits += text.substr(1, 3);
        text.remove_prefix(4);
    }
    return digits;
}

struct VulgarFraction {
    std::string_view sign, alone, behind;
};
constexpr std::array<VulgarFraction, 11> kVulgar{{
    {"½", "one half", "a half"},
    {"¼", "one quarter", "a quarter"},
    {"¾", "three quarters", "three quarters"},
    {"⅓", "one third", "a third"},
    {"⅔", "two thirds", "two thirds"},
    {"⅕", "one fifth", "a fifth"},
    {"⅖", "two fifths", "two fifths"},
    {"⅛", "one eighth", "an eighth"},
    {"⅜", "three eighths", "three eighths"},
    {"⅝", "five eighths", "five eighths"},
    {"⅞", "seven eighths", "seven eighths"},
}};

}  // namespace

void AddWord(std::string& words, std::string_view word) {
    if (word.empty()) return;
    if (!words.empty()) words += ' ';
    words += word;
}

int Value(std::string_view digits) {
    if (!AreDigits(digits)) return -1;
    return static_cast<int>(ParseInteger(digits, 0, 999'999'999).value_or(-1));
}

std::string_view TakeDigits(std::string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count])) ++count;
    const std::string_view digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

std::string BelowHundred(int n) {
    if (n < 20) return std::string(kBelowTwenty[static_cast<std::size_t>(n)]);
    std::string words(kTens[static_cast<std::size_t>(n / 10)]);
    if (n % 10 > 0) AddWord(words, kBelowTwenty[static_cast<std::size_t>(n % 10)]);
    return words;
}

std::optional<Number> TakeNumber(std::string_view& text) {
    std::string_view rest = text;
    Number number;
    number.negative = TakeStart(rest, "-");
    number.positive = !number.negative && TakeStart(rest, "+");
    const std::size_t before = rest.size();
    number.whole = TakeGrouped(rest);
    number.grouped = before - rest.size() != number.whole.size();
    if (rest.size() >= 2 && rest[0] == '.' && IsDigit(rest[1])) {
        rest.remove_prefix(1);
        number.fraction = TakeDigits(rest);
    }
    if (number.fraction.empty())
        for (const VulgarFraction& v : kVulgar)
            if (TakeStart(rest, v.sign)) number.vulgar = number.whole.empty() ? v.alone : v.behind;
    if (number.whole.empty() && number.fraction.empty() && number.vulgar.empty()) return std::nullopt;
    text = rest;
    return number;
}

std::string Say(const Number& number) {
    std::string words = number.negative ? "minus" : number.positive ? "plus" : "";
    if (!number.whole.empty()) AddWord(words, Cardinal(number.whole));
    if (!number.fraction.empty()) AddWord(words, "point"), AddWord(words, EachDigit(number.fraction));
    if (!number.vulgar.empty() && !number.whole.empty()) AddWord(words, "and");
    AddWord(words, number.vulgar);
    return words;
}

std::string SayOrLeave(const Number& number) { return number.IsPlain() ? number.whole : Say(number); }

std::string EachDigit(std::string_view text) {
    std::string words;
    for (const char c : text)
        if (IsDigit(c)) AddWord(words, kBelowTwenty[static_cast<std::size_t>(c - '0')]);
    return words;
}

std::string Cardinal(std::string_view digits) {
    const std::size_t significant = std::min(digits.find_first_not_of('0'), digits.size() - 1);
    const std::string_view number = digits.substr(significant);
    if (number.size() > 3 * kGroups.size()) return EachDigit(digits);
    std::string words;
    for (std::size_t left = number.size(); left > 0;) {
        const std::size_t count = (left - 1) % 3 + 1;
        const int value = Value(number.substr(number.size() - left, count));
        left -= count;
        if (value == 0 && number.size() > 1) continue;
        AddWord(words, BelowThousand(value));
        AddWord(words, kGroups[left / 3]);
    }
    return words;
}

std::string Ordinal(std::string_view digits) {
    struct Irregular {
        std::string_view cardinal, ordinal;
    };
    constexpr std::array<Irregular, 7> kIrregular{{{"one", "first"},
                                                   {"two", "second"},
                                                   {"three", "third"},
                                                   {"five", "fifth"},
                                                   {"eight", "eighth"},
                                                   {"nine", "ninth"},
                                                   {"twelve", "twelfth"}}};
    std::string words = Cardinal(digits);
    const std::size_t last = words.find_last_of(' ') + 1;
    for (const Irregular& i : kIrregular)
        if (words.substr(last) == i.cardinal) return words.substr(0, last) + std::string(i.ordinal);
    if (words.back() == 'y') words.replace(words.size() - 1, 1, "ie");
    return words + "th";
}

std::string Year(std::string_view digits) {
    const int year = Value(digits);
    if (year < 1000 || year > 9999 || year % 1000 < 10) return Cardinal(digits);
    std::string words = BelowHundred(year / 100);
    AddWord(words, year % 100 == 0 ? "hundred" : year % 100 < 10 ? "oh" : "");
    if (year % 100 > 0) AddWord(words, BelowHundred(year % 100));
    return words;
}

}  // namespace larynth
