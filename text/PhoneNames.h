// SPDX-License-Identifier: MIT
/// Phones and their symbols.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace larynth {

enum class SoundClass {
    Pause,
    Vowel,
    Diphthong,
    Glide,
    Nasal,
    VoicelessFricative,
    VoicedFricative,
    VoicelessStop,
    VoicedStop
};

/// A phone as a symbol names it.
struct PhoneSymbol {
    std::string_view name;  ///< In the phone table. Lives as long as the process.
    SoundClass kind = SoundClass::Pause;
    double seconds = 0.0;  ///< Inherent duration.
    int stress = 0;        ///< 0 none, 1 primary, 2 secondary.

    bool IsVowel() const { return kind == SoundClass::Vowel || kind == SoundClass::Diphthong; }
};

/// The phones that a language has, by name.
using PhoneSet = std::map<std::string, PhoneSymbol, std::less<>>;

/// A phone that a table has: as in English where that has the name, else as its class is on average. The name
/// must live as long as what is made of it.
PhoneSymbol PhoneOfTable(std::string_view name, SoundClass kind);

/// A symbol like "AH0", "T", "pau", in small or capital letters, or a name of the set; nothing for any other.
/// A vowel without a digit has no stress. Without a set it is English.
std::optional<PhoneSymbol> FindArpabet(std::string_view symbol, const PhoneSet* phones);

/// By its name in the phone table.
std::optional<PhoneSymbol> FindPhone(std::string_view name, const PhoneSet* phones);

}  // namespace larynth
