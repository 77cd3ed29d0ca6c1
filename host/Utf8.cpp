// SPDX-License-Identifier: MIT
#include "host/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace larynth {
namespace {

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Length of a sequence by its first byte: the mask and value of the marking bits, the least code point that
// needs this length.
struct SequenceForm {
    unsigned mask, marking;
    std::size_t length;
    std::uint32_t least;
};

constexpr std::array kForms{
    SequenceForm{0x80, 0x00, 1, 0x00},
    SequenceForm{0xE0, 0xC0, 2, 0x80},
    SequenceForm{0xF0, 0xE0, 3, 0x800},
    SequenceForm{0xF8, 0xF0, 4, 0x10000},
};

// Length of the well-formed character at the beginning of the text; 0 when there is none.
std::size_t FirstCharacter(std::string_view text) {
    const unsigned first = static_cast<unsigned char>(text.front());
    const auto form = std::find_if(kForms.begin(), kForms.end(),
                                   [&](const SequenceForm& f) { return (first & f.mask) == f.marking; });
    if (form == kForms.end() || text.size() < form->length) return 0;
    std::uint32_t code = first & ~form->mask & 0xFFu;
    for (std::size_t i = 1; i < form->length; ++i) {
        if (!IsContinuation(text[i])) return 0;
        code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3Fu);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < form->least || code > 0x10FFFF || surrogate ? 0 : form->length;
}

}  // namespace

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = FirstCharacter(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::size_t CharacterCount(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return !IsContinuation(c); }));
}

}  // namespace larynth
