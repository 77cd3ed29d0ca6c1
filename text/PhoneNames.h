// SPDX-License-Identifier: MIT
/// The phones of English and their symbols in two alphabets.
#pragma once

#include <optional>
#include <string_view>

namespace larynth {

enum class PhoneClass {
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
    PhoneClass kind = PhoneClass::Pause;
    double seconds = 0.0;  ///< Inherent duration.
    int stress = 0;        ///< 0 none, 1 primary, 2 secondary.

    bool IsVowel() const { return kind == PhoneClass::Vowel || kind == PhoneClass::Diphthong; }
};

/// A symbol like "AH0", "T", "pau", in small or capital letters; nothing for any other. A vowel without a
/// digit has no stress.
std::optional<PhoneSymbol> FindArpabet(std::string_view symbol);

/// By its name in the phone table.
std::optional<PhoneSymbol> FindPhone(std::string_view name);

}  // namespace larynth
