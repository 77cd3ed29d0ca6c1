// SPDX-License-Identifier: MIT
#include "text/Normalization.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "text/Abbreviations.h"
#include "text/CharacterNames.h"
#include "text/Characters.h"
#include "text/Dates.h"
#include "text/Figures.h"
#include "text/Lexicon.h"
#include "text/Numbers.h"

namespace larynth {
namespace {

constexpr std::size_t kLongestWord = 40;  // letters that are read as one word
constexpr std::string_view kOpening = "([{\"'`<*_~";
constexpr std::string_view kClosing = ".,;:!?)]}\"'`>*_~";
constexpr std::string_view kPausing = ",;:.?!";

bool Has(std::string_view set, char c) { return set.find(c) != std::string_view::npos; }

// With ASCII for everything that ASCII can say.
std::string Folded(std::string_view written) {
    std::string text;
    while (!written.empty()) {
        const char32_t c = TakeCharacter(written);
        if (const auto ascii = Ascii(c))
            text += *ascii;
        else
            AppendUtf8(text, c);
    }
    return text;
}

bool IsLetterOrDigit(char c) { return IsLetter(c) || IsDigit(c); }

bool StartsWithDigit(std::string_view text) { return !text.empty() && IsDigit(text[0]); }

bool IsAddress(std::string_view text) {
    if (text.find("://") != std::string_view::npos || text.starts_with("www.")) return true;
    const std::size_t at = text.find('@');
    if (at != std::string_view::npos) return at > 0 && text.find('.', at) != std::string_view::npos;
    constexpr std::array<std::string_view, 6> kEnds{".com", ".org", ".net", ".edu", ".gov", ".io"};
    return std::any_of(kEnds.begin(), kEnds.end(),
                       [&](std::string_view end) { return text.size() > end.size() && text.ends_with(end); });
}

// "U.S", "p.m", "J.R.R"
bool IsPointed(std::string_view text) {
    if (text.size() < 3 || text.size() % 2 == 0) return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (i % 2 == 0 ? !IsLetter(text[i]) : text[i] != '.') return false;
    return true;
}

class Normalizer {
  public:
    Normalizer(const std::vector<Token>& tokens, const TextOptions& options, Punctuation punctuation)
        : tokens_(tokens), options_(options), punctuation_(punctuation) {
        for (const Token& token : tokens) folded_.push_back(Folded(token.written));
    }

    std::vector<SpokenWord> Words() {
        for (index_ = 0; index_ < tokens_.size(); ++index_) SayToken();
        return std::move(words_);
    }

  private:
    void SayToken() {
        const Style& style = *tokens_[index_].style;
        if (!style.phones.empty()) return AddWord("phones", style.phones);
        if (options_.spell || style.sayAs == SayAs::Characters) return Spell(tokens_[index_].written);
        std::string_view text = folded_[index_];
        text = text.substr(SayOpening(text));
        const std::string_view core = text.substr(0, CoreLength(text));
        const std::string_view behind = text.substr(core.size());
        if (!core.empty()) SayCore(core, style, behind.starts_with('.'));
        SayClosing(behind);
    }

    // Returns the number of bytes in front of the core.
    std::size_t SayOpening(std::string_view text) {
        std::size_t i = 0;
        while (i < text.size()) {
            if (text[i] == '-' && text.substr(i, 2) != "--" && i + 1 < text.size()) break;
            if (text[i] != '-' && !Has(kOpening, text[i])) break;
            if (text[i] == '-' || text[i] == '(') AddPause(',');
            i += SayMarks(text.substr(i));
        }
        return i;
    }

    static std::size_t CoreLength(std::string_view text) {
        std::size_t end = text.size();
        while (end > 0 && (Has(kClosing, text[end - 1]) || text.substr(0, end).ends_with("--") ||
                           (text[end - 1] == '-' && text.substr(end - 1).starts_with("--"))))
            --end;
        return end;
    }

    void SayClosing(std::string_view marks) {
        const bool last = index_ + 1 == tokens_.size();
        while (!marks.empty()) {
            const char c = marks[0];
            const bool parts = c == ')' || marks.starts_with("...") || marks.starts_with("--");
            marks.remove_prefix(SayMarks(marks));
            if (parts) AddPause(',');
            if (Has(kPausing, c) && (c != '.' || last || NextBeginsSentence()))
                AddPause(c == '.' && !last ? ',' : c);
        }
    }

    // "in the U.S. The end": where the point leaves open whether the sentence goes on.
    bool NextBeginsSentence() const {
        constexpr std::array<std::string_view, 18> kBeginnings{
            "The", "It",  "He",    "She",   "We",    "They", "You", "This", "That",
            "But", "And", "These", "There", "Those", "If",   "In",  "When", "However"};
        const std::string next = NextCore();
        return std::find(kBeginnings.begin(), kBeginnings.end(), next) != kBeginnings.end();
    }

    // Names a row of one punctuation mark where the options ask for it; returns its length.
    std::size_t SayMarks(std::string_view text) {
        const std::size_t count = std::min(text.find_first_not_of(text[0]), text.size());
        SayNamed(static_cast<unsigned char>(text[0]), count);
        return count;
    }

    void SayNamed(char32_t c, std::size_t count) {
        const CharacterName* const name = FindCharacterName(c);
        if (name == nullptr) {
            if (count > 1) AddWords(Cardinal(std::to_string(count)));
            return AddWords(KindOfCharacter(c, count > 1));
        }
        if (name->from > punctuation_) return;
        if (count > 2 && punctuation_ != Punctuation::None) AddWords(Cardinal(std::to_string(count)));
        for (std::size_t i = 0; i < (count > 2 ? 1 : count); ++i) AddWords(name->name);
    }

    void SayCore(std::string_view core, const Style& style, bool point) {
        if (options_.capitals == Capitals::Spell && IsUpper(core[0])) AddWord("capital");
        if (SayFromLexicon(core)) return;
        if (auto words = SayAsTold(core, style)) return AddWords(*words);
        bool usedNext = false;
        const std::string next = index_ + 1 < tokens_.size() ? NextCore() : std::string();
        if (auto words = SayFigures(core, next, usedNext)) {
            AddWords(*words);
            if (usedNext) SayNextClosing(next.size());
            return;
        }
        if (auto words = ExpandAbbreviation(core, {point, index_ + 1 == tokens_.size(), next}))
            return AddWords(*words);
        if (IsPointed(core)) {
            for (std::size_t i = 0; i < core.size(); i += 2) SpellLetter(core[i]);
            return;
        }
        if (IsAddress(core)) return SayParts(core, Punctuation::All);
        SayParts(core, punctuation_);
    }

    std::string NextCore() const {
        const std::string_view next = folded_[index_ + 1];
        return std::string(next.substr(0, CoreLength(next)));
    }

    void SayNextClosing(std::size_t coreLength) {
        ++index_;
        SayClosing(std::string_view(folded_[index_]).substr(coreLength));
    }

    static std::optional<std::string> SayAsTold(std::string_view core, const Style& style) {
        const bool digits = std::all_of(core.begin(), core.end(), IsDigit);
        switch (style.sayAs) {
            case SayAs::Cardinal:
                return digits ? std::optional(Cardinal(core)) : std::nullopt;
            case SayAs::Ordinal:
                return digits ? std::optional(Ordinal(core)) : std::nullopt;
            case SayAs::Date:
                return SayDate(core, style.format);
            case SayAs::Time:
                return SayTime(core);
            case SayAs::Digits:
            case SayAs::Telephone: {
                const std::string words = EachDigit(core);
                return words.empty() ? std::nullopt
                                     : std::optional(words + (style.sayAs == SayAs::Telephone ? "," : ""));
            }
            case SayAs::Text:
            case SayAs::Characters:
                break;
        }
        return std::nullopt;
    }

    bool SayFromLexicon(std::string_view core) {
        const std::string* const phones =
            options_.lexicon == nullptr ? nullptr : options_.lexicon->Find(core);
        if (phones != nullptr) AddWord("phones", *phones);
        return phones != nullptr;
    }

    // Runs of letters and digits as words, runs of one sign by its name.
    void SayParts(std::string_view core, Punctuation punctuation) {
        const Punctuation usual = std::exchange(punctuation_, punctuation);
        if (core[0] == '-' && StartsWithDigit(core.substr(1))) AddWord("minus"), core.remove_prefix(1);
        while (!core.empty()) {
            if (const std::size_t count = WordLength(core)) {
                if (count < core.size() || IsBehindWord())
                    SayPart(core.substr(0, count));
                else
                    SayWord(core);
                core.remove_prefix(count);
            } else if (core[0] == '.' && core.size() > 1 && IsLetterOrDigit(core[1]) && IsBehindWord()) {
                AddWord(StartsWithDigit(core.substr(1)) && IsDigit(words_.back().text.back()) ? "point"
                                                                                              : "dot");
                core.remove_prefix(1);
            } else {
                SaySign(core);
            }
        }
        punctuation_ = usual;
    }

    static std::size_t WordLength(std::string_view text) {
        const auto isPart = [&](std::size_t i) {
            const bool apostrophe = text[i] == '\'' && i > 0 && i + 1 < text.size() && IsLetter(text[i + 1]);
            return IsLetterOrDigit(text[i]) || apostrophe;
        };
        std::size_t count = 0;
        while (count < text.size() && count < kLongestWord && isPart(count)) ++count;
        return count;
    }

    // Whether a word of this token has been said.
    bool IsBehindWord() const { return !words_.empty() && words_.back().source == index_; }

    void SaySign(std::string_view& core) {
        std::string_view rest = core;
        const char32_t sign = TakeCharacter(rest);
        std::size_t count = 1;
        for (std::string_view ahead = rest; !ahead.empty() && Same(TakeCharacter(ahead), sign); rest = ahead)
            ++count;
        if (core.starts_with("--")) AddPause(',');
        core = rest;
        if (sign == U'#' && !StartsWithDigit(core)) return AddWord("hash");
        const Punctuation usual = std::exchange(punctuation_, std::max(punctuation_, Punctuation::Some));
        const std::size_t said = words_.size();
        SayNamed(sign, count);  // inside a word signs have a meaning
        if (words_.size() == said && sign < 0x80 && Has(kPausing, static_cast<char>(sign)))
            AddPause(static_cast<char>(sign));
        punctuation_ = usual;
    }

    // Whether two characters are counted together.
    static bool Same(char32_t c, char32_t sign) {
        if (c == sign) return true;
        return c >= 0x80 && sign >= 0x80 && FindCharacterName(c) == nullptr &&
               FindCharacterName(sign) == nullptr &&
               KindOfCharacter(c, false) == KindOfCharacter(sign, false);
    }

    // The front end reads figures in a row digit by digit, and leaves noughts out that stand in front.
    void SayPart(std::string_view part) {
        const bool isShort = part.size() == 2 || part.size() == 3;
        if (!isShort || !std::all_of(part.begin(), part.end(), IsDigit)) return SayWord(part);
        AddWords(part[0] == '0' ? EachDigit(part) : Cardinal(part));
    }

    void SayWord(std::string_view word) {
        if (word.size() == 1 && Lower(word[0]) == 'a' && folded_[index_].size() > 1)
            AddWord("a", "ey1");
        else if (!SayFromLexicon(word))
            AddWord(word);
    }

    void Spell(std::string_view written) {
        while (!written.empty()) {
            const char32_t c = TakeCharacter(written);
            const auto ascii = Ascii(c);
            if (ascii && ascii->empty()) continue;
            if (!ascii || !IsLetterOrDigit((*ascii)[0])) {
                const Punctuation usual = std::exchange(punctuation_, Punctuation::All);
                SayNamed(ascii ? static_cast<unsigned char>((*ascii)[0]) : c, 1);
                punctuation_ = usual;
                continue;
            }
            for (const char letter : *ascii) SpellLetter(letter);
        }
    }

    void SpellLetter(char letter) {
        if (options_.capitals == Capitals::Spell && IsUpper(letter)) AddWord("capital");
        AddWord(std::string_view(&letter, 1), Lower(letter) == 'a' ? "ey1" : "");
    }

    // Words with blanks between them; punctuation may stand behind one.
    void AddWords(std::string_view words) {
        while (!words.empty()) {
            const std::size_t blank = std::min(words.find(' '), words.size());
            std::string_view word = words.substr(0, blank);
            words.remove_prefix(std::min(blank + 1, words.size()));
            const bool pause = !word.empty() && Has(kPausing, word.back());
            AddWord(pause ? word.substr(0, word.size() - 1) : word);
            if (pause) AddPause(word.back());
        }
    }

    void AddWord(std::string_view text, std::string_view phones = {}) {
        words_.push_back({std::string(text), std::string(phones), 0, index_});
    }

    void AddPause(char punctuation) {
        if (!words_.empty() && words_.back().punctuation == 0) words_.back().punctuation = punctuation;
    }

    const std::vector<Token>& tokens_;
    const TextOptions& options_;
    Punctuation punctuation_;
    std::vector<std::string> folded_;
    std::size_t index_ = 0;
    std::vector<SpokenWord> words_;
};

}  // namespace

std::vector<SpokenWord> Normalized(const std::vector<Token>& tokens, const TextOptions& options) {
    auto words = Normalizer(tokens, options, options.punctuation).Words();
    return words.empty() ? Normalizer(tokens, options, Punctuation::All).Words() : words;
}

}  // namespace larynth
