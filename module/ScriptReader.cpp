// SPDX-License-Identifier: MIT
#include "module/ScriptReader.h"

#include <algorithm>

#include "module/RegistryScript.h"

namespace larynth {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kEndsOfWord = " \t\r\n{}='";

char Lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsHexDigit(char c) noexcept { return (c >= '0' && c <= '9') || (Lower(c) >= 'a' && Lower(c) <= 'f'); }

/// Groups of 8, 4, 4, 4 and 12 digits.
bool IsIdentifier(std::string_view text) noexcept {
    constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    return std::ranges::equal(text, kForm,
                              [](char c, char form) { return form == 'x' ? IsHexDigit(c) : c == '-'; });
}

}  // namespace

bool IsSameWord(std::string_view left, std::string_view right) noexcept {
    return std::ranges::equal(left, right, {}, Lower, Lower);
}

void ScriptReader::SkipBlanks() { next_ = std::min(text_.find_first_not_of(kBlanks, next_), text_.size()); }

bool ScriptReader::AtEnd() {
    SkipBlanks();
    return next_ == text_.size();
}

bool ScriptReader::Accept(char mark) {
    const bool present = Precedes(mark);
    if (present) ++next_;
    return present;
}

void ScriptReader::Require(char mark, const char* expected) {
    if (!Accept(mark)) Fail(expected);
}

ScriptReader::Token ScriptReader::Word(const char* expected) {
    SkipBlanks();
    const std::size_t start = next_;
    next_ = std::min(text_.find_first_of(kEndsOfWord, start), text_.size());
    if (next_ == start) Fail(start, expected);
    return {start, text_.substr(start, next_ - start)};
}

ScriptReader::Token ScriptReader::BracedIdentifier() {
    constexpr std::size_t kLength = 38;
    SkipBlanks();
    const Token token{next_, text_.substr(next_, kLength)};
    if (token.text.size() != kLength || !IsIdentifier(token.text.substr(1, kLength - 2)) ||
        token.text.back() != '}') {
        Fail(token, "a class identifier in braces");
    }
    next_ += kLength;
    return token;
}

ScriptReader::Token ScriptReader::Quoted(const char* expected) {
    SkipBlanks();
    const std::size_t quote = next_;
    Require('\'', expected);
    for (std::size_t end = quote + 1;; end += 2) {
        end = text_.find_first_of("'\r\n", end);
        if (end == text_.npos || text_[end] != '\'') Fail(quote, "a closing quote on the same line");
        if (text_.substr(end, 2) == "''") continue;
        next_ = end + 1;
        return {quote + 1, text_.substr(quote + 1, end - quote - 1)};
    }
}

std::string ScriptReader::Meaning(Token token) const {
    std::string meaning;
    for (std::size_t i = 0; i < token.text.size(); ++i) {
        const char c = token.text[i];
        if (c != '%') {
            meaning += c;
            if (c == '\'') ++i;  // the second one of two
            continue;
        }
        const std::size_t end = token.text.find('%', i + 1);
        if (end == token.text.npos) Fail(token.offset + i, "a second percent sign");
        meaning += Variable(token.text.substr(i + 1, end - i - 1), token.offset + i);
        i = end;
    }
    return meaning;
}

/// The variable without name is the percent sign.
std::string_view ScriptReader::Variable(std::string_view name, std::size_t offset) const {
    if (name.empty()) return "%";
    if (!IsSameWord(name, "MODULE")) Fail(offset, "the variable MODULE");
    return modulePath_;
}

void ScriptReader::Fail(const char* expected) {
    SkipBlanks();
    Fail(next_, expected);
}

void ScriptReader::Fail(std::size_t offset, const char* expected) const {
    const std::string_view before = text_.substr(0, offset);
    const std::size_t lineStart = before.rfind('\n') + 1;  // 0 when there is none
    throw ScriptError(
        {static_cast<int>(std::ranges::count(before, '\n')) + 1, static_cast<int>(offset - lineStart) + 1},
        expected);
}

}  // namespace larynth
