// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace larynth {

/// Whether the text is well-formed UTF-8: no stray, missing or overlong bytes, no surrogates, nothing above
/// U+10FFFF.
bool IsUtf8(std::string_view text);

/// Number of characters; a malformed sequence counts what it looks like.
std::size_t CharacterCount(std::string_view text);

}  // namespace larynth
