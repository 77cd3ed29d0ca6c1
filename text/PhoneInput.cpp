// SPDX-License-Identifier: MIT
#include "text/PhoneInput.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "input/Text.h"

namespace larynth {
namespace {

constexpr std::size_t kMostPhones = 500;   // in an utterance
constexpr std::size_t kMostBytes = 1'000;  // between blanks

// A symbol of IPA and the phones that it stands for.
struct IpaSymbol {
    std::string_view written;
    std::string_view phones;
};

// What begins like another symbol stands in front of it. Sounds that English lacks have their nearest
// neighbours.
constexpr IpaSymbol kIpa[] = {
    {"iː", "iy"},   {"i", "iy"},  {"ɪə", "ih ax"}, {"ɪ", "ih"},   {"eɪ", "ey"},    {"eə", "eh ax"},
    {"e", "eh"},    {"ɛː", "eh"}, {"ɛ", "eh"},     {"æ", "ae"},   {"aɪ", "ay"},    {"aʊ", "aw"},
    {"aː", "aa"},   {"a", "aa"},  {"ɑː", "aa"},    {"ɑ", "aa"},   {"ɒ", "aa"},     {"ɔɪ", "oy"},
    {"ɔː", "ao"},   {"ɔ", "ao"},  {"oʊ", "ow"},    {"oː", "ow"},  {"o", "ow"},     {"əʊ", "ow"},
    {"əl", "ax l"}, {"ə", "ax"},  {"ɐ", "ah"},     {"ʌ", "ah"},   {"ʊə", "uh ax"}, {"ʊ", "uh"},
    {"uː", "uw"},   {"u", "uw"},  {"ʉ", "uw"},     {"ɜːɹ", "er"}, {"ɜː", "er"},    {"ɜ", "er"},
    {"ɝ", "er"},    {"ɚ", "er"},  {"ᵻ", "ih"},     {"ɨ", "ih"},   {"y", "iy"},     {"ø", "er"},
    {"œ", "er"},    {"tʃ", "ch"}, {"ʧ", "ch"},     {"dʒ", "jh"},  {"ʤ", "jh"},     {"p", "p"},
    {"b", "b"},     {"t", "t"},   {"d", "d"},      {"k", "k"},    {"g", "g"},      {"ɡ", "g"},
    {"m", "m"},     {"n", "n"},   {"ŋ", "ng"},     {"ɲ", "n y"},  {"f", "f"},      {"v", "v"},
    {"β", "v"},     {"θ", "th"},  {"ð", "dh"},     {"s", "s"},    {"z", "z"},      {"ʃ", "sh"},
    {"ʒ", "zh"},    {"h", "hh"},  {"ç", "hh"},     {"x", "k"},    {"χ", "k"},      {"ɣ", "g"},
    {"ɹ", "r"},     {"r", "r"},   {"ɻ", "r"},      {"ʁ", "r"},    {"l", "l"},      {"ɫ", "l"},
    {"ʎ", "l y"},   {"w", "w"},   {"ʍ", "w"},      {"j", "y"},    {"ɾ", "d"},      {"ʔ", "t"},
};

bool EndsUtterance(char c) { return c == '.' || c == '!' || c == '?'; }

// Length of a pause, s.
double PauseOf(char punctuation) { return EndsUtterance(punctuation) ? 0.3 : 0.2; }

// Signs that do not tell phones of English apart: ties, length, aspiration, marks on letters.
bool TakeDetail(std::string_view& text) {
    for (const std::string_view sign : {"ː", "ˑ", "ʰ", "ʲ", "ʷ", "ˠ", "‿", "̯"})
        if (TakeStart(text, sign)) return true;
    std::string_view rest = text;
    const auto ascii = Ascii(TakeCharacter(rest));
    if (!ascii || !ascii->empty()) return false;
    text = rest;
    return true;
}

class IpaWord {
  public:
    IpaWord(std::string_view text, const PhoneSet* phones) : text_(text), known_(phones) {
        // A tie and its two letters are one symbol, as without it.
        for (const std::string_view tie : {"͡", "͜"})
            for (std::size_t at = 0; (at = text_.find(tie, at)) != std::string::npos;)
                text_.erase(at, tie.size());
    }

    // What is no symbol, with what follows it; empty where all is well.
    std::string Parse(std::vector<WrittenPhone>& phones) {
        for (std::string_view rest = text_; !rest.empty();) {
            if (TakeStart(rest, "ˈ") || TakeStart(rest, "'"))
                stress_ = 1, syllable_ = true;
            else if (TakeStart(rest, "ˌ"))
                stress_ = 2, syllable_ = true;
            else if (TakeStart(rest, ".") || TakeStart(rest, "-"))
                stress_ = 0, syllable_ = true;
            else if (!TakeSymbol(rest, phones) && !TakeDetail(rest))
                return std::string(rest);
        }
        return {};
    }

  private:
    bool TakeSymbol(std::string_view& rest, std::vector<WrittenPhone>& phones) {
        const auto* const symbol = std::find_if(std::begin(kIpa), std::end(kIpa), [&](const IpaSymbol& s) {
            return rest.starts_with(s.written) && AreKnown(s.phones);
        });
        const std::size_t length = symbol == std::end(kIpa) ? 0 : symbol->written.size();
        const std::string_view own = OwnName(rest);
        if (own.empty() && length == 0) return false;
        const bool isOwn = own.size() >= length;
        std::string_view names = isOwn ? own : symbol->phones;
        rest.remove_prefix(isOwn ? own.size() : length);
        for (std::string_view name = FirstOf(names); !name.empty(); name = FirstOf(names)) {
            WrittenPhone phone{*FindPhone(name, known_), false, std::exchange(syllable_, false), 0};
            if (phone.symbol.IsVowel()) phone.symbol.stress = std::exchange(stress_, 0);
            phones.push_back(phone);
            names = Trimmed(names.substr(name.size()));
        }
        return true;
    }

    static std::string_view FirstOf(std::string_view names) { return names.substr(0, names.find(' ')); }

    bool AreKnown(std::string_view names) const {
        for (; !names.empty(); names = Trimmed(names.substr(FirstOf(names).size())))
            if (!FindPhone(FirstOf(names), known_)) return false;
        return true;
    }

    // The longest name of a phone that the text begins with and that English does not have.
    std::string_view OwnName(std::string_view text) const {
        std::string_view longest;
        if (known_ == nullptr) return longest;
        for (const auto& [name, phone] : *known_)
            if (name.size() > longest.size() && text.starts_with(name) && !FindPhone(name, nullptr))
                longest = name;
        return longest;
    }

    std::string text_;
    const PhoneSet* known_;
    int stress_ = 0;
    bool syllable_ = false;
};

WrittenPhone PauseFor(char punctuation) {
    PhoneSymbol pause = *FindPhone("pau", nullptr);
    pause.seconds = PauseOf(punctuation);
    return {pause, false, false, punctuation};
}

}  // namespace

PhoneReader::PhoneReader(std::istream& input, std::string name, const TextOptions& options)
    : characters_(input), name_(std::move(name)), form_(options.form), phones_(options.phones) {}

bool PhoneReader::ReadToken() {
    token_.clear();
    while (token_.size() < kMostBytes && characters_.Next()) {
        if (!IsBlank(characters_.Current())) {
            if (token_.empty()) line_ = characters_.Line(), column_ = characters_.Column();
            AppendUtf8(token_, characters_.Current());
        } else if (!token_.empty()) {
            break;
        }
    }
    return !token_.empty();
}

void PhoneReader::AddToken() {
    std::string_view text = token_;
    std::string_view marks = text;
    const std::size_t length = text.find_last_not_of(".,;:!?") + 1;
    text = text.substr(0, length);
    marks.remove_prefix(length);
    auto& phones = phrase_.phones;
    const std::size_t first = phones.size();
    std::string bad;
    if (form_ == TextForm::Ipa) {
        bad = IpaWord(text, phones_).Parse(phones);
    } else if (!text.empty() && text != "|") {
        if (const auto phone = FindArpabet(text, phones_))
            phones.push_back({*phone, false, false, 0});
        else
            bad = text;
    }
    if (!bad.empty()) {
        phones.resize(first);
        const auto before =
            static_cast<std::int64_t>(CharacterCount(token_) - CharacterCount(marks) - CharacterCount(bad));
        throw BadInput({name_, line_, column_ + before}, "a phone instead of " + Quoted(bad));
    }
    if (phones.size() > first && (form_ == TextForm::Ipa || first == 0 || wordEnded_)) {
        phones[first].startsWord = true;
        phrase_.words.emplace_back(first, text);
    } else if (phones.size() > first) {
        phrase_.words.back().second += " " + std::string(text);
    }
    wordEnded_ = text.empty() || text == "|";
    if (!marks.empty() && !phones.empty()) phones.push_back(PauseFor(marks.back()));
    wordEnded_ = wordEnded_ || !marks.empty();
    complete_ = (!marks.empty() && EndsUtterance(marks.back())) || phones.size() >= kMostPhones;
}

bool PhoneReader::Next(Utterance& utterance) {
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
    phrase_ = {};
    complete_ = false;
    try {
        while (!(complete_ && !phrase_.phones.empty()) && ReadToken()) AddToken();
    } catch (const BadInput&) {
        if (phrase_.phones.empty()) throw;
        failure_ = std::current_exception();
    }
    if (phrase_.phones.empty()) return false;
    if (phrase_.phones.back().symbol.kind != SoundClass::Pause) phrase_.phones.push_back(PauseFor('.'));
    utterance = WithProsody(phrase_);
    return true;
}

std::optional<std::string> PhonesOfWord(std::string_view text, TextForm form, std::string& bad) {
    std::vector<WrittenPhone> phones;
    bad.clear();
    for (std::string_view rest = Trimmed(text); !rest.empty() && bad.empty();) {
        const std::string_view symbol = rest.substr(0, rest.find_first_of(kBlanks));
        rest = Trimmed(rest.substr(symbol.size()));
        if (form == TextForm::Ipa)
            bad = IpaWord(symbol, nullptr).Parse(phones);
        else if (const auto phone = FindArpabet(symbol, nullptr))
            phones.push_back({*phone, false, false, 0});
        else
            bad = symbol;
    }
    if (!bad.empty() || phones.empty()) return std::nullopt;
    std::string names;
    for (const WrittenPhone& phone : phones) {
        if (!names.empty()) names += ' ';
        names += phone.symbol.name;
        if (phone.symbol.IsVowel()) names += static_cast<char>('0' + phone.symbol.stress);
    }
    return names;
}

}  // namespace larynth
