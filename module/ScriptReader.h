// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace larynth {

/// Compares ASCII letters without regard to their case.
bool IsSameWord(std::string_view left, std::string_view right) noexcept;

/// Reads a registry script mark by mark and word by word; blanks and line ends separate and mean nothing
/// else. What is not as expected raises ScriptError with the place where it stands.
class ScriptReader {
  public:
    /// Both have to outlive the reader.
    ScriptReader(std::string_view text, std::string_view modulePath) : text_(text), modulePath_(modulePath) {}

    /// A piece of the script as it is written.
    struct Token {
        std::size_t offset;
        std::string_view text;
    };

    bool AtEnd();
    /// True when the mark comes next.
    bool Precedes(char mark) { return !AtEnd() && text_[next_] == mark; }
    /// Takes the mark if it comes next.
    bool Accept(char mark);
    void Require(char mark, const char* expected);

    /// What stands before the next blank, brace, equals sign or quote; never empty.
    Token Word(const char* expected);
    /// A class identifier with its braces.
    Token BracedIdentifier();
    /// What stands between single quotes on one line; a doubled quote is part of it.
    Token Quoted(const char* expected);

    /// The token's meaning: %MODULE% is replaced by the module's path, two percent signs by one, a doubled
    /// quote by one. What comes in is not looked at again, so that no path can break a script.
    std::string Meaning(Token token) const;

    [[noreturn]] void Fail(const Token& at, const char* expected) const { Fail(at.offset, expected); }
    /// At what comes next.
    [[noreturn]] void Fail(const char* expected);

  private:
    void SkipBlanks();
    [[noreturn]] void Fail(std::size_t offset, const char* expected) const;
    std::string_view Variable(std::string_view name, std::size_t offset) const;

    std::string_view text_;
    std::string_view modulePath_;
    std::size_t next_ = 0;
};

}  // namespace larynth
