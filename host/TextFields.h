// SPDX-License-Identifier: MIT
/// Pieces of text that users wrote.
#pragma once

#include <string>
#include <string_view>

namespace larynth {

inline constexpr std::string_view kBlanks = " \t";
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Without blanks at either end.
std::string_view Trimmed(std::string_view text);

/// As a message shows it, in quotation marks: no control characters, not too much of it.
std::string Quoted(std::string_view text);

}  // namespace larynth
