// SPDX-License-Identifier: MIT
#include "text/PhoneNames.h"

#include <algorithm>
#include <array>

#include "text/Characters.h"

namespace larynth {
namespace {

// Inherent durations after D. H. Klatt, "Synthesis by rule of segmental durations in English sentences"
// (1979), s; for an affricate both parts together.
using enum SoundClass;
constexpr std::array<PhoneSymbol, 41> kPhones{{
    {"pau", Pause, 0.200},
    {"iy", Vowel, 0.155},
    {"ih", Vowel, 0.135},
    {"eh", Vowel, 0.150},
    {"ae", Vowel, 0.230},
    {"aa", Vowel, 0.240},
    {"ao", Vowel, 0.240},
    {"ah", Vowel, 0.140},
    {"ax", Vowel, 0.120},
    {"uh", Vowel, 0.160},
    {"uw", Vowel, 0.210},
    {"er", Vowel, 0.180},
    {"ey", Diphthong, 0.190},
    {"ay", Diphthong, 0.250},
    {"oy", Diphthong, 0.280},
    {"aw", Diphthong, 0.260},
    {"ow", Diphthong, 0.220},
    {"w", Glide, 0.080},
    {"y", Glide, 0.080},
    {"r", Glide, 0.080},
    {"l", Glide, 0.080},
    {"hh", VoicelessFricative, 0.080},
    {"m", Nasal, 0.070},
    {"n", Nasal, 0.060},
    {"ng", Nasal, 0.095},
    {"f", VoicelessFricative, 0.100},
    {"th", VoicelessFricative, 0.090},
    {"s", VoicelessFricative, 0.105},
    {"sh", VoicelessFricative, 0.105},
    {"v", VoicedFricative, 0.060},
    {"dh", VoicedFricative, 0.050},
    {"z", VoicedFricative, 0.075},
    {"zh", VoicedFricative, 0.070},
    {"ch", VoicelessStop, 0.140},
    {"jh", VoicedStop, 0.120},
    {"p", VoicelessStop, 0.090},
    {"t", VoicelessStop, 0.075},
    {"k", VoicelessStop, 0.080},
    {"b", VoicedStop, 0.085},
    {"d", VoicedStop, 0.075},
    {"g", VoicedStop, 0.080},
}};

// Means of the rows above, s, by class.
constexpr std::array<double, 9> kTypical{0.200, 0.170, 0.240, 0.080, 0.075, 0.100, 0.065, 0.080, 0.080};

std::optional<PhoneSymbol> FindEnglish(std::string_view name) {
    const auto phone =
        std::find_if(kPhones.begin(), kPhones.end(), [&](const PhoneSymbol& p) { return p.name == name; });
    return phone == kPhones.end() ? std::nullopt : std::optional(*phone);
}

}  // namespace

PhoneSymbol PhoneOfTable(std::string_view name, SoundClass kind) {
    return FindEnglish(name).value_or(PhoneSymbol{name, kind, kTypical.at(static_cast<std::size_t>(kind))});
}

std::optional<PhoneSymbol> FindPhone(std::string_view name, const PhoneSet* phones) {
    if (phones == nullptr) return FindEnglish(name);
    const auto phone = phones->find(name);
    return phone == phones->end() ? std::nullopt : std::optional(phone->second);
}

std::optional<PhoneSymbol> FindArpabet(std::string_view symbol, const PhoneSet* phones) {
    const bool marked = !symbol.empty() && symbol.back() >= '0' && symbol.back() <= '2';
    const int stress = marked ? symbol.back() - '0' : 0;
    if (marked) symbol.remove_suffix(1);
    std::string name = Lower(symbol);
    if (name == "h") name = "hh";
    // A central vowel is written as its stressed kin.
    const bool isReduced = name == "ah" && marked && stress == 0;
    if (isReduced) name = "ax";
    auto phone = isReduced ? std::nullopt : FindPhone(symbol, phones);
    if (!phone) phone = FindPhone(name, phones);
    if (!phone || (marked && !phone->IsVowel())) return std::nullopt;
    phone->stress = stress;
    return phone;
}

}  // namespace larynth
