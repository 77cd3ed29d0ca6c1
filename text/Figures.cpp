// SPDX-License-Identifier: MIT
#include "text/Figures.h"

#include <algorithm>
#include <vector>

#include "text/Characters.h"
#include "text/Dates.h"
#include "text/Numbers.h"
#include "text/Quantities.h"

namespace larynth {
namespace {

std::optional<std::string> SayMultiple(std::string_view text) {
    const auto first = TakeNumber(text);
    if (!first || (!TakeStart(text, "x") && !TakeStart(text, "×"))) return std::nullopt;
    if (text.empty()) return Say(*first) + " times";
    const auto second = TakeNumber(text);
    if (!second || !text.empty()) return std::nullopt;
    return SayOrLeave(*first) + " by " + SayOrLeave(*second);
}

std::optional<std::string> SayOrdinal(std::string_view text) {
    const auto number = TakeNumber(text);
    if (!number || number->positive || number->negative || !number->fraction.empty() ||
        !number->vulgar.empty())
        return std::nullopt;
    if (text != "st" && text != "nd" && text != "rd" && text != "th") return std::nullopt;
    return Ordinal(number->whole);
}

std::optional<std::string> SayTelephone(std::string_view text) {
    const bool international = TakeStart(text, "+");
    std::vector<std::string_view> groups;
    for (;;) {
        groups.push_back(TakeDigits(text));
        if (groups.back().empty()) return std::nullopt;
        if (!TakeStart(text, "-")) break;
    }
    const bool isLocal = groups.size() == 2 && groups[0].size() == 3 && groups[1].size() == 4;
    if (!text.empty() || (!isLocal && groups.size() < 3 && !(international && groups[0].size() > 6)))
        return std::nullopt;
    std::string words = international ? "plus" : "";
    for (const std::string_view group : groups) {
        if (!words.empty() && group.data() != groups[0].data()) words += ',';
        AddWord(words, EachDigit(group));
    }
    return words;
}

std::optional<std::string> SayRange(std::string_view text) {
    const auto first = TakeNumber(text);
    if (!first || (!TakeStart(text, "--") && !TakeStart(text, "-"))) return std::nullopt;
    bool unused = false;
    if (auto measure = SayMeasure(text, {}, unused)) return SayOrLeave(*first) + " to " + *measure;
    const auto second = TakeNumber(text);
    if (!second || second->negative || second->positive || !text.empty()) return std::nullopt;
    return SayOrLeave(*first) + " to " + SayOrLeave(*second);
}

// "2:30-3:30"
std::optional<std::string> SayTimes(std::string_view text) {
    const std::size_t dash = std::min(text.find('-'), text.size());
    const auto first = SayTime(text.substr(0, dash));
    text.remove_prefix(dash);
    if (!first || (!TakeStart(text, "--") && !TakeStart(text, "-"))) return std::nullopt;
    const auto second = SayTime(text);
    return second ? std::optional(*first + " to " + *second) : std::nullopt;
}

std::optional<std::string> SayFraction(std::string_view text) {
    const int numerator = Value(TakeDigits(text));
    if (!TakeStart(text, "/")) return std::nullopt;
    const std::string_view digits = TakeDigits(text);
    const int denominator = Value(digits);
    if (!text.empty() || numerator < 1 || denominator < 2 || numerator >= denominator || denominator > 20)
        return std::nullopt;
    const std::string part = denominator == 2 ? "half" : denominator == 4 ? "quarter" : Ordinal(digits);
    return BelowHundred(numerator) + " " + part + (numerator > 1 ? "s" : "");
}

// "3 1/2"
std::optional<std::string> SayMixed(std::string_view text, std::string_view next, bool& usedNext) {
    const auto fraction = SayFraction(next);
    if (!fraction || Value(text) < 0) return std::nullopt;
    usedNext = true;
    return Cardinal(text) + " and " + *fraction;
}

// "1.5e-3"
std::optional<std::string> SayPowerOfTen(std::string_view text) {
    const auto number = TakeNumber(text);
    if (!number || number->whole.empty() || (!TakeStart(text, "e") && !TakeStart(text, "E")))
        return std::nullopt;
    const auto power = TakeNumber(text);
    if (!power || !text.empty() || power->whole.empty() || !power->fraction.empty()) return std::nullopt;
    return Say(*number) + " times ten to the " + Say(*power);
}

// "1.2.3": the numbers of a version, an address, a chapter.
std::optional<std::string> SayPointed(std::string_view text) {
    std::string words(TakeDigits(text));
    const bool isAddress = std::count(text.begin(), text.end(), '.') > 2;
    while (!words.empty() && TakeStart(text, ".")) {
        const std::string_view digits = TakeDigits(text);
        if (digits.empty()) return std::nullopt;
        AddWord(words, isAddress ? "dot" : "point");
        AddWord(words, digits);
    }
    if (!text.empty() || words.find(' ') == std::string::npos) return std::nullopt;
    return words;
}

// A number that would not be read well as its figures stand.
std::optional<std::string> SaySimple(std::string_view text) {
    const auto number = TakeNumber(text);
    if (!number || !text.empty() || number->IsPlain()) return std::nullopt;
    return Say(*number);
}

}  // namespace

std::optional<std::string> SayFigures(std::string_view text, std::string_view next, bool& usedNext) {
    usedNext = false;
    if (auto words = SayCurrency(text, next, usedNext)) return words;
    if (auto words = SayMeasure(text, next, usedNext)) return words;
    if (auto words = SayMixed(text, next, usedNext)) return words;
    if (auto words = SayDate(text, "")) return words;
    for (const auto say : {SayTime, SayTimes, SayMultiple, SayOrdinal, SayTelephone, SayRange, SayFraction,
                           SayPowerOfTen, SaySimple, SayPointed})
        if (auto words = say(text)) return words;
    return std::nullopt;
}

}  // namespace larynth
