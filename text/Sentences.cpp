// SPDX-License-Identifier: MIT
#include "text/Sentences.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "text/Characters.h"

namespace larynth {
namespace {

constexpr std::size_t kLongBytes = 400;         // from here on a comma or a blank ends a sentence
constexpr std::size_t kLeastBytes = 200;        // if it leaves as much in front
constexpr std::size_t kMostBytes = 450;         // here anything does
constexpr std::size_t kLongestRow = 1000;       // characters without a blank; of more, the number is said
constexpr std::size_t kMostAnnotations = 1000;  // in a sentence

enum class Ending { No, Perhaps, Yes };  // perhaps: before a capital letter

// Abbreviations whose point ends no sentence, and those that may stand at a sentence's end.
constexpr std::array<std::string_view, 26> kNeverLast{
    "mr",  "mrs", "ms", "dr", "prof", "rev", "gen", "sen", "rep", "gov", "capt", "col", "lt",
    "sgt", "st",  "mt", "ft", "vs",   "fig", "eq",  "ch",  "vol", "ed",  "pp",   "cf",  "messrs",
};
constexpr std::array<std::string_view, 33> kPerhapsLast{
    "etc",  "inc",  "ltd", "co",   "corp", "jr",  "sr",  "no",  "nos", "al",  "approx",
    "dept", "est",  "ave", "blvd", "rd",   "jan", "feb", "mar", "apr", "jun", "jul",
    "aug",  "sept", "sep", "oct",  "nov",  "dec", "mon", "tue", "wed", "thu", "fri",
};

template <class Table>
bool Contains(const Table& table, std::string_view word) {
    return std::find(table.begin(), table.end(), word) != table.end();
}

bool TakeEnd(std::string_view& text, std::string_view end) {
    if (!text.ends_with(end)) return false;
    text.remove_suffix(end.size());
    return true;
}

bool TakeCloser(std::string_view& text) {
    for (const std::string_view closer : {"\"", "'", ")", "]", "}", "”", "’", "»"})
        if (TakeEnd(text, closer)) return true;
    return false;
}

// "p.m", "U.S", "e.g": letters one by one. They stand without their last point.
bool IsPointed(std::string_view word) {
    if (word.size() < 3) return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (i % 2 == 0 ? !IsLetter(word[i]) : word[i] != '.') return false;
    return true;
}

bool IsNumber(std::string_view word) { return std::all_of(word.begin(), word.end(), IsDigit); }

Ending AtPoint(std::string_view before) {
    const std::size_t blank = before.find_last_of(' ');
    std::string_view written = before.substr(blank == std::string_view::npos ? 0 : blank + 1);
    written.remove_prefix(std::min(written.find_first_not_of("(\"'["), written.size()));
    const std::string word = Lower(written);
    if (word.size() == 1 && IsLetter(word[0])) return Ending::No;              // an initial
    if (IsNumber(word) && blank == std::string_view::npos) return Ending::No;  // the number of an item
    if (Contains(kNeverLast, word) || word == "e.g" || word == "i.e") return Ending::No;
    if (Contains(kPerhapsLast, word)) return Ending::Perhaps;
    if (!IsPointed(word)) return Ending::Yes;
    return IsUpper(written[0]) ? Ending::No : Ending::Perhaps;
}

Ending AtEnd(std::string_view text) {
    bool closed = false;
    while (TakeCloser(text)) closed = true;
    if (text.ends_with('!') || text.ends_with('?')) return closed ? Ending::Perhaps : Ending::Yes;
    if (TakeEnd(text, "…") || TakeEnd(text, "..")) return Ending::Perhaps;
    if (!TakeEnd(text, ".")) return Ending::No;
    const Ending ending = AtPoint(text);
    return ending == Ending::Yes && closed ? Ending::Perhaps : ending;
}

// Full stops, exclamation and question marks that no blank follows.
bool IsIdeographicEnd(char32_t c) { return c == U'。' || c == U'！' || c == U'？'; }

// At the beginning of a line.
bool IsBullet(char32_t c) { return c == U'*' || c == U'-' || c == U'•'; }

bool IsSmallLetter(char32_t c) { return (c >= U'a' && c <= U'z') || (c >= 0xDF && c <= 0xFF); }

}  // namespace

void SentenceCutter::AddBlank(bool lineEnd) {
    EndRow();
    const bool afterWord = !current_.text.empty() && current_.text.back() != ' ';
    if (afterWord) {
        const Ending ending = AtEnd(current_.text);
        current_.text += ' ';
        undecided_ = ending == Ending::Perhaps;
        if (ending == Ending::Yes) EndSentence();
    }
    if (lineEnd && std::exchange(lineEnded_, true)) EndSentence();
}

void SentenceCutter::Add(char32_t c) {
    if (IsBlank(c)) return AddBlank(c == U'\n');
    if (++row_ > kLongestRow && !IsIdeographicEnd(c)) return;
    if (std::exchange(lineEnded_, false) && IsBullet(c)) EndSentence();
    const bool continues = IsSmallLetter(c) || (c >= U'0' && c <= U'9') || c == U',' || c == U';';
    if (std::exchange(undecided_, false) && !continues) EndSentence();
    if (current_.text.empty() && current_.annotations.empty()) current_.style = style_;
    AppendUtf8(current_.text, c);
    if (IsIdeographicEnd(c)) EndSentence();
    CutTooLong();
}

void SentenceCutter::Annotate(Annotation annotation) {
    if (current_.text.empty() && current_.annotations.empty()) current_.style = style_;
    annotation.place = current_.text.size();
    if (annotation.kind == Annotation::Kind::Style) style_ = annotation.style;
    current_.annotations.push_back(std::move(annotation));
    if (current_.annotations.size() >= kMostAnnotations) Finish();
}

// What is as long as this is no word. A megabyte of it would take a day to say.
void SentenceCutter::EndRow() {
    const std::size_t row = std::exchange(row_, 0);
    if (row <= kLongestRow) return;
    for (const char c : " and " + std::to_string(row - kLongestRow) + " more characters")
        Add(static_cast<unsigned char>(c));
    row_ = 0;
}

void SentenceCutter::EndSentence() {
    if (!current_.text.empty()) Finish();
}

void SentenceCutter::Finish() {
    EndRow();
    undecided_ = false;
    if (!current_.text.empty() || !current_.annotations.empty()) complete_.push_back(std::move(current_));
    current_ = {};
    current_.style = style_;
}

bool SentenceCutter::Take(MarkedText& sentence) {
    if (complete_.empty()) return false;
    sentence = std::move(complete_.front());
    complete_.pop_front();
    return true;
}

void SentenceCutter::CutTooLong() {
    const std::string_view text = current_.text;
    if (text.size() < kLongBytes) return;
    for (std::size_t i = text.size() - 1; i > kLeastBytes; --i)
        if (text[i] == ' ' && std::string_view(",;:").find(text[i - 1]) != std::string_view::npos)
            return CutAt(i);
    const std::size_t blank = text.find_last_of(' ');
    if (blank != std::string_view::npos && blank > kLeastBytes) return CutAt(blank);
    if (text.size() >= kMostBytes) CutAt(text.size());
}

void SentenceCutter::CutAt(std::size_t place) {
    const auto first = std::find_if(current_.annotations.begin(), current_.annotations.end(),
                                    [&](const Annotation& a) { return a.place >= place; });
    MarkedText rest;
    const std::size_t from = std::min(current_.text.find_first_not_of(' ', place), current_.text.size());
    rest.text = current_.text.substr(from);
    rest.annotations.assign(first, current_.annotations.end());
    for (Annotation& a : rest.annotations) a.place -= std::min(a.place, from);
    current_.annotations.erase(first, current_.annotations.end());
    current_.text.resize(place);
    rest.style = current_.style;
    for (const Annotation& a : current_.annotations)
        if (a.kind == Annotation::Kind::Style) rest.style = a.style;
    complete_.push_back(std::exchange(current_, std::move(rest)));
}

}  // namespace larynth
