// SPDX-License-Identifier: MIT
#include "text/Dates.h"

#include <algorithm>
#include <array>

#include "text/Characters.h"
#include "text/Numbers.h"

namespace larynth {
namespace {

constexpr std::array<std::string_view, 12> kMonths{"January",   "February", "March",    "April",
                                                   "May",       "June",     "July",     "August",
                                                   "September", "October",  "November", "December"};

}  // namespace

std::optional<std::string> SayDate(std::string_view text, std::string_view order) {
    std::array<std::string_view, 3> parts;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0 && !TakeStart(text, "/") && !TakeStart(text, "-") && !TakeStart(text, "."))
            return std::nullopt;
        parts[i] = TakeDigits(text);
    }
    if (!text.empty() || parts[2].empty()) return std::nullopt;
    if (order.size() != 3)
        order = parts[0].size() == 4   ? "ymd"
                : Value(parts[0]) > 12 ? "dmy"
                : parts[2].size() == 4 ? "mdy"
                                       : "";
    if (order.empty()) return std::nullopt;
    const auto part = [&](char letter) { return parts[std::min<std::size_t>(order.find(letter), 2)]; };
    const int month = Value(part('m')), day = Value(part('d'));
    if (month < 1 || month > 12 || day < 1 || day > 31 || part('y').size() > 4) return std::nullopt;
    return std::string(kMonths[static_cast<std::size_t>(month - 1)]) + " " + Ordinal(part('d')) + ", " +
           Year(part('y'));
}

std::optional<std::string> SayTime(std::string_view text) {
    const std::string_view hour = TakeDigits(text);
    if (Value(hour) < 0 || Value(hour) > 24 || hour.size() > 2 || !TakeStart(text, ":")) return std::nullopt;
    const std::string_view minute = TakeDigits(text);
    if (minute.size() != 2 || Value(minute) > 59) return std::nullopt;
    std::string words = Cardinal(hour);
    std::string_view second;
    if (TakeStart(text, ":")) {
        second = TakeDigits(text);
        if (second.size() != 2 || Value(second) > 59) return std::nullopt;
    }
    const std::string half = Lower(text);
    const bool isHalf = half == "am" || half == "pm" || half == "a.m" || half == "p.m";
    if (!text.empty() && !isHalf) return std::nullopt;
    if (Value(minute) > 0 && Value(minute) < 10) AddWord(words, "oh");
    if (Value(minute) > 0) AddWord(words, BelowHundred(Value(minute)));
    if (Value(minute) == 0 && !isHalf) AddWord(words, Value(hour) <= 12 ? "o'clock" : "hundred");
    if (!second.empty()) AddWord(words, "and " + BelowHundred(Value(second)) + " seconds");
    if (isHalf) AddWord(words, half[0] == 'a' ? "A M" : "P M");
    return words;
}

}  // namespace larynth
