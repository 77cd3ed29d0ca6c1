// SPDX-License-Identifier: MIT
#include "text/Characters.h"

#include <algorithm>
#include <array>
#include <utility>

#include "input/Text.h"

namespace larynth {
namespace {

constexpr char32_t kByteOrderMark = 0xFEFF;

// What the bytes 0x80 to 0x9F mean in Windows-1252; 0 for nothing.
constexpr std::array<char32_t, 32> kWindows1252{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

// Letters without their marks, from U+00C0 and from U+1E00 on; a point for what is no such letter.
constexpr char32_t kFirstLatin = 0xC0;
constexpr std::string_view kLatin =
    "AAAAAA.CEEEEIIII.NOOOOO.OUUUUY..aaaaaa.ceeeeiiii.nooooo.ouuuuy.yAaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGg"
    "GgGgHhHhIiIiIiIiIi..JjKkkLlLlLlLlLlNnNnNn...OoOoOo..RrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs"
    "bBBb...Cc.DDd....FfG...IKkl..NnOOo..Pp.....tTtTUu.VYyZz......................AaIiOoUuUuUuUuUu.Aa"
    "Aa..GgGgKkOoOo..j...Gg..NnAa..OoAaAaEeEeIiIiOoOoRrRrUuUuSsTt..HhNd..ZzAaEeOoOoOoOoYylnt...ACcLTs"
    "z..BU.EeJj.qRrYy";
constexpr char32_t kFirstLatinAdditional = 0x1E00;
constexpr std::string_view kLatinAdditional =
    "AaBbBbBbCcDdDdDdDdDdEeEeEeEeEeFfGgHhHhHhHhHhIiIiKkKkKkLlLlLlLlMmMmMmNnNnNnNnOoOoOoOoPpPpRrRrRrRr"
    "SsSsSsSsSsTtTtTtTtUuUuUuUuUuVvVvWwWwWwWwWwXxXxYyZzZzZzhtwyas....AaAaAaAaAaAaAaAaAaAaAaAaEeEeEeEe"
    "EeEeEeEeIiIiOoOoOoOoOoOoOoOoOoOoOoOoUuUuUuUuUuUuUuYyYyYyYy....Yy";

struct Spelling {
    char32_t code;
    std::string_view text;
};

// Characters that more than one letter stands for, or another sign of the same meaning; by code.
constexpr std::array kSpellings{
    Spelling{0x4B, "K"},    Spelling{0xA1, ""},      Spelling{0xAA, "a"},     Spelling{0xAB, "\""},
    Spelling{0xB4, "'"},    Spelling{0xBA, "o"},     Spelling{0xBB, "\""},    Spelling{0xBF, ""},
    Spelling{0xC5, "A"},    Spelling{0xC6, "AE"},    Spelling{0xD0, "Dh"},    Spelling{0xDE, "Th"},
    Spelling{0xDF, "ss"},   Spelling{0xE6, "ae"},    Spelling{0xF0, "dh"},    Spelling{0xFE, "th"},
    Spelling{0x132, "IJ"},  Spelling{0x133, "ij"},   Spelling{0x149, "'n"},   Spelling{0x14A, "Ng"},
    Spelling{0x14B, "ng"},  Spelling{0x152, "OE"},   Spelling{0x153, "oe"},   Spelling{0x1C4, "DZ"},
    Spelling{0x1C5, "Dz"},  Spelling{0x1C6, "dz"},   Spelling{0x1C7, "LJ"},   Spelling{0x1C8, "Lj"},
    Spelling{0x1C9, "lj"},  Spelling{0x1CA, "NJ"},   Spelling{0x1CB, "Nj"},   Spelling{0x1CC, "nj"},
    Spelling{0x1E2, "AE"},  Spelling{0x1E3, "ae"},   Spelling{0x1F1, "DZ"},   Spelling{0x1F2, "Dz"},
    Spelling{0x1F3, "dz"},  Spelling{0x1FC, "AE"},   Spelling{0x1FD, "ae"},   Spelling{0x2BB, "'"},
    Spelling{0x2BC, "'"},   Spelling{0x1E9E, "SS"},  Spelling{0x2010, "-"},   Spelling{0x2011, "-"},
    Spelling{0x2012, "--"}, Spelling{0x2013, "--"},  Spelling{0x2014, "--"},  Spelling{0x2015, "--"},
    Spelling{0x2018, "'"},  Spelling{0x2019, "'"},   Spelling{0x201A, "'"},   Spelling{0x201B, "'"},
    Spelling{0x201C, "\""}, Spelling{0x201D, "\""},  Spelling{0x201E, "\""},  Spelling{0x201F, "\""},
    Spelling{0x2025, ".."}, Spelling{0x2026, "..."}, Spelling{0x2032, "'"},   Spelling{0x2033, "\""},
    Spelling{0x2039, "'"},  Spelling{0x203A, "'"},   Spelling{0x2044, "/"},   Spelling{0x2212, "-"},
    Spelling{0x2215, "/"},  Spelling{0x3001, ","},   Spelling{0x3002, "."},   Spelling{0xFB00, "ff"},
    Spelling{0xFB01, "fi"}, Spelling{0xFB02, "fl"},  Spelling{0xFB03, "ffi"}, Spelling{0xFB04, "ffl"},
    Spelling{0xFB05, "st"}, Spelling{0xFB06, "st"},
};

// Every letter, so that a part of it can be given away.
constexpr std::string_view kAscii =
    " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~";

std::string_view AsciiPart(char32_t c) { return kAscii.substr(c - 0x20, 1); }

bool IsWithin(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }

char32_t Windows1252(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    const char32_t c = IsWithin(code, 0x80, 0x9F) ? kWindows1252[code - 0x80U] : code;
    return c == 0 ? U' ' : c;
}

// The letters of formulas come as thirteen alphabets of 52 letters each, the digits as five rows of ten.
std::optional<std::string_view> MathematicalAscii(char32_t c) {
    if (IsWithin(c, 0x1D400, 0x1D6A3)) {
        const char32_t letter = (c - 0x1D400) % 52;
        return AsciiPart(letter < 26 ? U'A' + letter : U'a' + letter - 26);
    }
    if (IsWithin(c, 0x1D7CE, 0x1D7FF)) return AsciiPart(U'0' + (c - 0x1D7CE) % 10);
    return std::nullopt;
}

// Marks on letters, choices between glyphs, joiners, directions, places where a word may be parted.
bool ShowsNothing(char32_t c) {
    return IsWithin(c, 0x300, 0x36F) || IsWithin(c, 0xFE00, 0xFE0F) || IsWithin(c, 0x200B, 0x200F) ||
           IsWithin(c, 0x202A, 0x202E) || IsWithin(c, 0x2060, 0x206F) || c == 0xAD || c == kByteOrderMark;
}

std::optional<std::string_view> LatinLetter(char32_t c) {
    const bool additional = c >= kFirstLatinAdditional;
    const std::string_view letters = additional ? kLatinAdditional : kLatin;
    const char32_t first = additional ? kFirstLatinAdditional : kFirstLatin;
    if (c < first || c - first >= letters.size() || letters[c - first] == '.') return std::nullopt;
    return letters.substr(c - first, 1);
}

}  // namespace

bool CharacterStream::Fill(std::size_t count) {
    while (ahead_.size() < count) {
        const int byte = input_.get();
        if (byte == std::istream::traits_type::eof()) return false;
        ahead_ += static_cast<char>(byte);
    }
    return true;
}

// A first byte asks for as many more as it announces, and for no more than there can be use for: a pipe may
// be slow.
char32_t CharacterStream::Take() {
    const auto first = static_cast<unsigned char>(ahead_.front());
    const std::size_t length = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    for (std::size_t count = 2; count <= length; ++count)
        if (!Fill(count) || (ahead_[count - 1] & 0xC0) != 0x80) break;
    const Character character = FirstCharacter(ahead_);
    const char32_t code = character.length > 0 ? character.code : Windows1252(ahead_.front());
    ahead_.erase(0, std::max<std::size_t>(character.length, 1));
    return code;
}

bool CharacterStream::Next() {
    if (current_ == U'\n') ++line_, column_ = 0;
    do {
        if (!Fill(1)) return false;
        current_ = Take();
    } while (!std::exchange(begun_, true) && current_ == kByteOrderMark);
    ++column_;
    if (current_ != U'\n' && (current_ < 0x20 || IsWithin(current_, 0x7F, 0x9F))) current_ = U' ';
    return true;
}

char32_t TakeCharacter(std::string_view& text) {
    const Character character = FirstCharacter(text);
    const char32_t code = character.length > 0 ? character.code : Windows1252(text.front());
    text.remove_prefix(std::max<std::size_t>(character.length, 1));
    return code;
}

bool TakeStart(std::string_view& text, std::string_view start) {
    if (!text.starts_with(start)) return false;
    text.remove_prefix(start.size());
    return true;
}

void AppendUtf8(std::string& text, char32_t c) {
    if (c < 0x80) {
        text += static_cast<char>(c);
        return;
    }
    const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    constexpr std::array<unsigned, 4> kMarking{0, 0xC0, 0xE0, 0xF0};
    text += static_cast<char>(kMarking[static_cast<std::size_t>(more)] | c >> 6 * more);
    for (int i = more - 1; i >= 0; --i) text += static_cast<char>(0x80 | (c >> 6 * i & 0x3F));
}

bool IsBlank(char32_t c) {
    return c <= 0x20 || IsWithin(c, 0x7F, 0xA0) || c == 0x1680 || IsWithin(c, 0x2000, 0x200A) ||
           IsWithin(c, 0x2028, 0x2029) || c == 0x202F || c == 0x205F || c == 0x3000;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return Lower(c); });
    return lower;
}

std::optional<std::string_view> Ascii(char32_t c) {
    if (IsWithin(c, 0x20, 0x7E)) return AsciiPart(c);
    if (IsWithin(c, 0xFF01, 0xFF5E)) return AsciiPart(c - 0xFF01 + 0x21);  // as wide as an ideograph
    if (ShowsNothing(c)) return std::string_view();
    const auto spelling = std::lower_bound(kSpellings.begin(), kSpellings.end(), c,
                                           [](const Spelling& s, char32_t code) { return s.code < code; });
    if (spelling != kSpellings.end() && spelling->code == c) return spelling->text;
    if (const auto letter = LatinLetter(c)) return letter;
    return MathematicalAscii(c);
}

}  // namespace larynth
