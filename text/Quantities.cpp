// SPDX-License-Identifier: MIT
#include "text/Quantities.h"

#include <algorithm>
#include <array>

#include "text/Characters.h"
#include "text/Numbers.h"

namespace larynth {
namespace {

struct Currency {
    std::string_view sign, one, many, centOne, centMany;
};
constexpr std::array<Currency, 8> kCurrencies{{
    {"US$", "U S dollar", "U S dollars", "cent", "cents"},
    {"C$", "Canadian dollar", "Canadian dollars", "cent", "cents"},
    {"A$", "Australian dollar", "Australian dollars", "cent", "cents"},
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

}  // namespace

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

}  // namespace larynth
