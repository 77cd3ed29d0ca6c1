// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larynth {

/// What stands around a word that may be an abbreviation.
struct AbbreviationContext {
    bool point;             ///< A point stands behind it.
    bool last;              ///< It is the last of its sentence.
    std::string_view next;  ///< The word behind it.
};

/// An abbreviation, without its last point, in full; nothing for any other word.
std::optional<std::string> ExpandAbbreviation(std::string_view word, const AbbreviationContext& context);

}  // namespace larynth
