// SPDX-License-Identifier: MIT
/// Characters of texts that come from anywhere, and what of them ASCII can say.
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace larynth {

/// The characters of a stream, without a byte order mark at its beginning. Bytes that are no UTF-8 are read
/// as characters of Windows-1252, which contains Latin-1. Control characters are blanks, but for line feeds.
class CharacterStream {
  public:
    /// The input must live as long as this object.
    explicit CharacterStream(std::istream& input) : input_(input) {}

    /// Moves to the next character; false behind the last one.
    bool Next();
    char32_t Current() const noexcept { return current_; }

    std::int64_t Line() const noexcept { return line_; }      ///< Of the current character, from 1.
    std::int64_t Column() const noexcept { return column_; }  ///< In characters, from 1.

  private:
    bool Fill(std::size_t count);
    char32_t Take();

    std::istream& input_;
    std::string ahead_;
    char32_t current_ = 0;
    std::int64_t line_ = 1;
    std::int64_t column_ = 0;
    bool begun_ = false;
};

/// Takes the first character off a text that is not empty.
char32_t TakeCharacter(std::string_view& text);

/// Takes `start` off the beginning of a text; false where it does not stand there.
bool TakeStart(std::string_view& text, std::string_view start);

void AppendUtf8(std::string& text, char32_t c);

/// Blanks of every width, line ends, control characters.
bool IsBlank(char32_t c);

inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }
inline bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
inline bool IsLetter(char c) { return IsUpper(c) || (c >= 'a' && c <= 'z'); }
inline char Lower(char c) { return IsUpper(c) ? static_cast<char>(c + 32) : c; }
std::string Lower(std::string_view text);

/// What a character is in ASCII: itself, the letter without its accent, the letters of a ligature, a
/// quotation mark for any; an empty text for what shows nothing or is a mark on a letter. Nothing for what
/// ASCII cannot say.
std::optional<std::string_view> Ascii(char32_t c);

}  // namespace larynth
