// SPDX-License-Identifier: MIT
#include "text/Abbreviations.h"

#include <algorithm>
#include <array>

#include "text/Characters.h"

namespace larynth {
namespace {

enum class When {
    Always,
    Point,         // with a point behind it
    BeforeName,    // with a point and a capital letter behind it
    BeforeNumber,  // with a point and a digit behind it
    Title,         // in front of a capital letter
};

struct Abbreviation {
    std::string_view written, full;
    When when;
};

// The first line that fits counts.
constexpr Abbreviation kAbbreviations[] = {
    {"mr", "mister", When::Always},         {"mrs", "missus", When::Always},
    {"ms", "miz", When::BeforeName},        {"dr", "doctor", When::Title},
    {"dr", "drive", When::Point},           {"st", "saint", When::Title},
    {"st", "street", When::Point},          {"ft", "fort", When::BeforeName},
    {"mt", "mount", When::BeforeName},      {"prof", "professor", When::Always},
    {"rev", "reverend", When::BeforeName},  {"gen", "general", When::BeforeName},
    {"sen", "senator", When::BeforeName},   {"rep", "representative", When::BeforeName},
    {"gov", "governor", When::BeforeName},  {"capt", "captain", When::Point},
    {"col", "colonel", When::BeforeName},   {"lt", "lieutenant", When::BeforeName},
    {"sgt", "sergeant", When::Point},       {"etc", "et cetera", When::Always},
    {"e.g", "for example", When::Always},   {"i.e", "that is", When::Always},
    {"ph.d", "P H D", When::Always},        {"vs", "versus", When::Always},
    {"cf", "compare", When::Point},         {"no", "number", When::BeforeNumber},
    {"nos", "numbers", When::BeforeNumber}, {"fig", "figure", When::BeforeNumber},
    {"eq", "equation", When::BeforeNumber}, {"vol", "volume", When::BeforeNumber},
    {"ch", "chapter", When::BeforeNumber},  {"p", "page", When::BeforeNumber},
    {"pp", "pages", When::BeforeNumber},    {"approx", "approximately", When::Point},
    {"dept", "department", When::Point},    {"est", "established", When::BeforeNumber},
    {"inc", "incorporated", When::Point},   {"ltd", "limited", When::Always},
    {"corp", "corporation", When::Point},   {"jr", "junior", When::Always},
    {"sr", "senior", When::Point},          {"ave", "avenue", When::Point},
    {"blvd", "boulevard", When::Always},    {"rd", "road", When::Point},
    {"jan", "January", When::Point},        {"feb", "February", When::Point},
    {"mar", "March", When::Point},          {"apr", "April", When::Point},
    {"aug", "August", When::Point},         {"sept", "September", When::Point},
    {"sep", "September", When::Point},      {"oct", "October", When::Point},
    {"nov", "November", When::Point},       {"dec", "December", When::Point},
    {"w/", "with", When::Always},           {"w/o", "without", When::Always},
};

bool Fits(const Abbreviation& abbreviation, const AbbreviationContext& context) {
    const char next = context.last || context.next.empty() ? '\0' : context.next[0];
    switch (abbreviation.when) {
        case When::Always:
            return true;
        case When::Point:
            return context.point;
        case When::BeforeName:
            return context.point && IsUpper(next);
        case When::Title:
            return IsUpper(next);
        case When::BeforeNumber:
            return context.point && IsDigit(next);
    }
    return false;
}

}  // namespace

std::optional<std::string> ExpandAbbreviation(std::string_view word, const AbbreviationContext& context) {
    const std::string lower = Lower(word);
    for (const Abbreviation& abbreviation : kAbbreviations)
        if (abbreviation.written == lower && Fits(abbreviation, context))
            return std::string(abbreviation.full);
    return std::nullopt;
}

}  // namespace larynth
