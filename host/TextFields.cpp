// SPDX-License-Identifier: MIT
#include "host/TextFields.h"

#include <algorithm>

namespace larynth {

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t kMost = 40;
    std::string shown(text.substr(0, kMost));
    std::replace_if(
        shown.begin(), shown.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, '?');
    return '"' + shown + (text.size() > kMost ? "…\"" : "\"");
}

}  // namespace larynth
