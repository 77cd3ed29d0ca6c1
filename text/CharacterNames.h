// SPDX-License-Identifier: MIT
/// How characters are said that are neither letters of English nor digits.
#pragma once

#include <string_view>

#include "text/UtteranceReader.h"

namespace larynth {

struct CharacterName {
    std::string_view name;
    char32_t code;
    Punctuation from;  ///< The least punctuation with which it is said; `None`: always.
};

/// Null for a character without a name.
const CharacterName* FindCharacterName(char32_t c);

/// What a character without a name is: "Greek letter", "unknown character"; of several, the plural.
std::string_view KindOfCharacter(char32_t c, bool many);

}  // namespace larynth
