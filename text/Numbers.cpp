// SPDX-License-Identifier: MIT
#include "text/Numbers.h"

#include <algorithm>
#include <array>
#include <vector>

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
constexpr std::array<std::string_view, 12> kMonths{"January",   "February", "March",    "April",
                                                   "May",       "June",     "July",     "August",
                                                   "September", "October",  "November", "December"};

void AddWord(std::string& words, std::string_view word) {
    if (word.empty()) return;
    if (!words.empty()) words += ' ';
    words += word;
}

std::string BelowHundred(int n) {
    if (n < 20) return std::string(kBelowTwenty[static_cast<std::size_t>(n)]);
    std::string words(kTens[static_cast<std::size_t>(n / 10)]);
    if (n % 10 > 0) AddWord(words, kBelowTwenty[static_cast<std::size_t>(n % 10)]);
    return words;
}

std::string BelowThousand(int n) {
    std::string words;
    if (n >= 100) words = std::string(kBelowTwenty[static_cast<std::size_t>(n / 100)]) + " hundred";
    if (n % 100 > 0 || n == 0) AddWord(words, BelowHundred(n % 100));
    return words;
}

bool AreDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

// Of digits that fit; -1 for anything else.
int Value(std::string_view digits) {
    if (!AreDigits(digits)) return -1;
    return static_cast<int>(ParseInteger(digits, 0, 999'999'999).value_or(-1));
}

// Takes digits off the beginning.
std::string_view TakeDigits(std::string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count])) ++count;
    const std::string_view digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

bool TakeStart(std::string_view& text, std::string_view start) {
    if (!text.starts_with(start)) return false;
    text.remove_prefix(start.size());
    return true;
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

// A number in front of a text.
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

// Plain integers are left as they are: whether one is a year, a code or a count is told from its neighbours
// later.
std::string SayOrLeave(const Number& number) { return number.IsPlain() ? number.whole : Say(number); }

struct Currency {
    std::string_view sign, one, many, centOne, centMany;
};
constexpr std::array<Currency, 5> kCurrencies{{
    {"$", "dollar", "dollars", "cent", "cents"},
    {"€", "euro", "euros", "cent", "cents"},
    {"£", "pound", "pounds", "penny", "pence"},
    {"¥", "yen", "yen", "", ""},
    {"₹", "rupee", "rupees", "paisa", "paise"},
}};

struct Multiplier {
    std::string_view written, said;
};
constexpr std::array<Multiplier, 9> kMultipliers{{{"k", "thousand"},
                                                  {"K", "thousand"},
                                                  {"M", "million"},
                                                  {"m", "million"},
                                                  {"bn", "billion"},
                                                  {"B", "billion"},
                                                  {"million", "million"},
                                                  {"billion", "billion"},
                                                  {"trillion", "trillion"}}};

std::string_view FindMultiplier(std::string_view written) {
    for (const Multiplier& m : kMultipliers)
        if (m.written == written) return m.said;
    return {};
}

std::string SayMoney(const Number& amount, const Currency& currency) {
    const bool cents = amount.fraction.size() == 2 && !currency.centOne.empty() && amount.vulgar.empty();
    if (!cents) return Say(amount) + " " + std::string(amount.IsOne() ? currency.one : currency.many);
    std::string words = amount.negative ? "minus" : "";
    const int whole = Value(amount.whole), part = Value(amount.fraction);
    if (whole != 0)
        AddWord(words, Cardinal(amount.whole)), AddWord(words, whole == 1 ? currency.one : currency.many);
    if (whole != 0 && part > 0) AddWord(words, "and");
    if (part > 0)
        AddWord(words, BelowHundred(part)), AddWord(words, part == 1 ? currency.centOne : currency.centMany);
    if (whole == 0 && part == 0) AddWord(words, "zero"), AddWord(words, currency.many);
    return words;
}

std::optional<std::string> SayCurrency(std::string_view text, std::string_view next, bool& usedNext) {
    const bool negative = TakeStart(text, "-");
    for (const Currency& currency : kCurrencies) {
        std::string_view rest = text;
        const bool before = TakeStart(rest, currency.sign);
        auto amount = TakeNumber(rest);
        if (!amount || (!before && !TakeStart(rest, currency.sign))) continue;
        amount->negative = amount->negative || negative;
        if (rest.empty() && next.size() > 2 && !FindMultiplier(next).empty()) {
            usedNext = true;
            return Say(*amount) + " " + std::string(next) + " " + std::string(currency.many);
        }
        if (rest.empty()) return SayMoney(*amount, currency);
        const std::string_view multiplier = FindMultiplier(rest);
        if (multiplier.empty()) return std::nullopt;
        return Say(*amount) + " " + std::string(multiplier) + " " + std::string(currency.many);
    }
    return std::nullopt;
}

struct Unit {
    std::string_view written, one, many;
    bool apart;  // also behind a blank
};
constexpr std::array<Unit, 44> kUnits{{
    {"%", "percent", "percent", true},
    {"‰", "per mille", "per mille", true},
    {"°C", "degree Celsius", "degrees Celsius", true},
    {"°F", "degree Fahrenheit", "degrees Fahrenheit", true},
    {"℃", "degree Celsius", "degrees Celsius", true},
    {"℉", "degree Fahrenheit", "degrees Fahrenheit", true},
    {"°", "degree", "degrees", false},
    {"km/h", "kilometer per hour", "kilometers per hour", true},
    {"m/s", "meter per second", "meters per second", true},
    {"mph", "mile per hour", "miles per hour", true},
    {"km", "kilometer", "kilometers", true},
    {"cm", "centimeter", "centimeters", true},
    {"mm", "millimeter", "millimeters", true},
    {"µm", "micrometer", "micrometers", true},
    {"nm", "nanometer", "nanometers", true},
    {"m", "meter", "meters", true},
    {"ft", "foot", "feet", true},
    {"mi", "mile", "miles", true},
    {"km²", "square kilometer", "square kilometers", true},
    {"m²", "square meter", "square meters", true},
    {"m³", "cubic meter", "cubic meters", true},
    {"kg", "kilogram", "kilograms", true},
    {"mg", "milligram", "milligrams", true},
    {"g", "gram", "grams", true},
    {"lb", "pound", "pounds", true},
    {"lbs", "pound", "pounds", true},
    {"oz", "ounce", "ounces", true},
    {"ml", "milliliter", "milliliters", true},
    {"l", "liter", "liters", true},
    {"ms", "millisecond", "milliseconds", true},
    {"s", "second", "seconds", false},
    {"min", "minute", "minutes", true},
    {"h", "hour", "hours", true},
    {"Hz", "hertz", "hertz", true},
    {"kHz", "kilohertz", "kilohertz", true},
    {"MHz", "megahertz", "megahertz", true},
    {"GHz", "gigahertz", "gigahertz", true},
    {"kB", "kilobyte", "kilobytes", true},
    {"KB", "kilobyte", "kilobytes", true},
    {"MB", "megabyte", "megabytes", true},
    {"GB", "gigabyte", "gigabytes", true},
    {"TB", "terabyte", "terabytes", true},
    {"kW", "kilowatt", "kilowatts", true},
    {"dB", "decibel", "decibels", true},
}};

const Unit* FindUnit(std::string_view written) {
    const auto unit =
        std::find_if(kUnits.begin(), kUnits.end(), [&](const Unit& u) { return u.written == written; });
    return unit == kUnits.end() ? nullptr : &*unit;
}

std::optional<std::string> SayMeasure(std::string_view text, std::string_view next, bool& usedNext) {
    const auto number = TakeNumber(text);
    if (!number) return std::nullopt;
    const bool isPlainSeries =
        text == "s" && number->IsPlain() && number->whole.size() > 1;  // "1990s", "80s"
    const Unit* unit = text.empty() ? FindUnit(next) : isPlainSeries ? nullptr : FindUnit(text);
    if (unit == nullptr || (text.empty() && !unit->apart)) return std::nullopt;
    usedNext = text.empty();
    return Say(*number) + " " + std::string(number->IsOne() ? unit->one : unit->many);
}

std::optional<std::string> SayMultiple(std::string_view text) {
    const auto first = TakeNumber(text);
    if (!first || (!TakeStart(text, "x") && !TakeStart(text, "×"))) return std::nullopt;
    if (text.empty()) return Say(*first) + " times";
    const auto second = TakeNumber(text);
    if (!second || !text.empty()) return std::nullopt;
    return SayOrLeave(*first) + " by " + SayOrLeave(*second);
}

std::optional<std::string> SayOrdinal(std::string_view text) {
    const std::string digits = TakeGrouped(text);
    if (digits.empty() || (text != "st" && text != "nd" && text != "rd" && text != "th")) return std::nullopt;
    return Ordinal(digits);
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
        if (words.substr(last) == i.cardinal) return words.replace(last, std::string::npos, i.ordinal);
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

std::optional<std::string> SayFigures(std::string_view text, std::string_view next, bool& usedNext) {
    usedNext = false;
    if (text.find_first_of("0123456789") == std::string_view::npos) {
        bool any = false;
        for (const VulgarFraction& v : kVulgar) any = any || text.starts_with(v.sign);
        if (!any) return std::nullopt;
    }
    if (auto words = SayCurrency(text, next, usedNext)) return words;
    if (auto words = SayMeasure(text, next, usedNext)) return words;
    if (auto words = SayDate(text, "")) return words;
    for (const auto say :
         {SayTime, SayMultiple, SayOrdinal, SayTelephone, SayRange, SayFraction, SaySimple, SayPointed})
        if (auto words = say(text)) return words;
    return std::nullopt;
}

}  // namespace larynth
