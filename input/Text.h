// SPDX-License-Identifier: MIT
/// Text that users wrote: its lines, its characters, the numbers in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

#include "input/BadInput.h"

namespace larynth {

/// The lines of a text file, one after the other, without a byte order mark at the file's beginning and
/// without a carriage return at a line's end. A line has at most a million bytes.
class TextLines {
  public:
    /// `fileName` serves messages. The input must live as long as this object.
    TextLines(std::istream& input, std::string fileName) : input_(input), fileName_(std::move(fileName)) {}

    /// Moves to the next line; false behind the last one. Raises BadInput when the input cannot be read and
    /// for a line that is too long.
    bool Next();

    std::string_view Line() const noexcept { return line_; }

    /// A place in the current line, or in the one behind the last; `column` from 1.
    TextPosition At(std::int64_t column) const { return {fileName_, number_, column}; }
    /// The same, by the beginning of a part of the line.
    TextPosition At(std::string_view part) const;

  private:
    std::istream& input_;
    std::string fileName_;
    std::string buffer_;
    std::string_view line_;
    std::int64_t number_ = 0;
};

/// Spaces and tabs.
inline constexpr std::string_view kBlanks = " \t";

/// Without blanks at either end; a part of the text also where nothing is left.
std::string_view Trimmed(std::string_view text);

/// As a terminal may get it: the bytes of control characters, of those that change the direction of writing,
/// and of malformed UTF-8 as \x and two digits each.
std::string Printable(std::string_view text);

/// As a message shows it: printable, in quotation marks, not too much of it.
std::string Quoted(std::string_view text);

/// The first control character of well-formed UTF-8, a separator of lines or paragraphs among them; npos when
/// there is none.
std::size_t FindControl(std::string_view text);

/// Whether the text is well-formed UTF-8: no stray, missing or overlong bytes, no surrogates, nothing above
/// U+10FFFF.
bool IsUtf8(std::string_view text);

/// A character at the beginning of a text.
struct Character {
    std::size_t length = 0;  ///< Bytes; 0: malformed, missing or overlong bytes, a surrogate, above U+10FFFF.
    char32_t code = 0;
};
Character FirstCharacter(std::string_view text);  ///< Of a text that is not empty.

/// Number of characters; a malformed sequence counts what it looks like.
std::size_t CharacterCount(std::string_view text);

/// A finite number in decimal notation, with the grammar of std::from_chars, independent of the locale;
/// nothing for any other text, for nan, inf, and what does not fit a double.
std::optional<double> ParseNumber(std::string_view text);

/// A sample frequency (Hz): a number in the range that `kSampleFreqRange` names. Denormal numbers are
/// outside, because they count as 0 where sound is made.
std::optional<double> ParseSampleFreq(std::string_view text);
inline constexpr char kSampleFreqRange[] = "a number above 0 (from 2.2250738585072014e-308 on)";

/// A whole number from `lowest` to `highest`, written without fraction and exponent.
std::optional<std::int64_t> ParseInteger(std::string_view text, std::int64_t lowest, std::int64_t highest);

/// The shortest text that reads back as the same number.
std::string ShortestText(double value);

/// `decimals` digits behind the point.
std::string FixedText(double value, int decimals);

}  // namespace larynth
