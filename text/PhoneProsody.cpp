// SPDX-License-Identifier: MIT
#include "text/PhoneProsody.h"

#include <algorithm>
#include <string_view>

namespace larynth {
namespace {

// At 1 the table's durations are those of slow, careful sentences.
constexpr double kUsualTempo = 0.8;

// Levels in standard deviations of F0.
constexpr double kStart = 0.8, kEnd = -0.6;  // of a phrase's baseline
constexpr double kAccent = 1.2;              // of a syllable with primary stress, above the baseline
constexpr double kFall = -1.8, kRise = 2.6, kContinuation = 0.6;

bool IsStop(const PhoneSymbol& p) {
    return p.kind == SoundClass::VoicelessStop || p.kind == SoundClass::VoicedStop;
}
bool IsPause(const PhoneSymbol& p) { return p.kind == SoundClass::Pause; }
bool IsVoiceless(const PhoneSymbol& p) {
    return p.kind == SoundClass::VoicelessStop || p.kind == SoundClass::VoicelessFricative;
}

// Pairs that begin words of English.
bool IsOnset(const PhoneSymbol& first, const PhoneSymbol& second) {
    if (first.name == "s")
        return second.kind == SoundClass::VoicelessStop || second.kind == SoundClass::Nasal ||
               second.kind == SoundClass::Glide;
    const bool obstruent = IsStop(first) || first.kind == SoundClass::VoicelessFricative;
    return obstruent && second.kind == SoundClass::Glide && first.name != "ch" && first.name != "jh";
}

class Rules {
  public:
    explicit Rules(const PhonePhrase& phrase) : phones_(phrase.phones), words_(phrase.words) {}

    Utterance Apply() {
        FindSyllables();
        SpreadStress();
        for (std::size_t i = 0; i < phones_.size(); ++i) {
            const WrittenPhone& p = phones_[i];
            utterance_.phones.push_back({std::string(p.symbol.name),
                                         Duration(i),
                                         p.symbol.stress,
                                         p.startsSyllable,
                                         p.startsWord,
                                         {}});
        }
        for (std::size_t begin = 0; begin < phones_.size();) {
            const std::size_t end = PhraseEnd(begin);
            AddContour(begin, end);
            begin = end + 1;
        }
        for (const auto& [place, word] : words_) utterance_.marks.push_back({place, Mark::Kind::Word, word});
        return std::move(utterance_);
    }

  private:
    bool At(std::size_t i, bool (*is)(const PhoneSymbol&)) const {
        return i < phones_.size() && is(phones_[i].symbol);
    }
    bool IsVowel(std::size_t i) const { return i < phones_.size() && phones_[i].symbol.IsVowel(); }
    bool IsConsonant(std::size_t i) const { return i < phones_.size() && !IsVowel(i) && !At(i, IsPause); }

    // A vowel takes the consonants in front of it that can begin a word.
    void FindSyllables() {
        bool started = false;  // in front of this vowel, since the last one
        for (std::size_t i = 0; i < phones_.size(); ++i) {
            WrittenPhone& phone = phones_[i];
            phone.startsSyllable = phone.startsSyllable || phone.startsWord;
            if (phone.startsSyllable || At(i, IsPause)) started = true;
            if (!IsVowel(i)) continue;
            if (!started) {
                std::size_t first = i;
                if (IsConsonant(i - 1)) first = i - 1;
                while (first < i && first > 1 && IsConsonant(first - 1) &&
                       IsOnset(phones_[first - 1].symbol, phones_[first].symbol))
                    --first;
                phones_[first].startsSyllable = true;
            }
            started = false;
        }
    }

    std::size_t SyllableEnd(std::size_t begin) const {
        std::size_t end = begin + 1;
        while (end < phones_.size() && !phones_[end].startsSyllable && !At(end, IsPause)) ++end;
        return end;
    }

    void SpreadStress() {
        for (std::size_t begin = 0; begin < phones_.size();) {
            const std::size_t end = SyllableEnd(begin);
            int stress = 0;
            for (std::size_t i = begin; i < end; ++i) stress = std::max(stress, phones_[i].symbol.stress);
            for (std::size_t i = begin; i < end; ++i) phones_[i].symbol.stress = stress;
            begin = end;
        }
    }

    // The factors of Klatt's rules that matter most: lengthening in front of a pause, shortening without
    // stress, in clusters, and of vowels in front of voiceless consonants.
    double Duration(std::size_t i) const {
        const PhoneSymbol& phone = phones_[i].symbol;
        if (IsPause(phone)) return phone.seconds;
        double factor = kUsualTempo;
        const bool last = SyllableEnd(i) == phones_.size() || At(SyllableEnd(i), IsPause);
        if (phone.IsVowel()) {
            if (last) factor *= 1.4;
            if (phone.stress == 0) factor *= 0.6;
            if (!phones_[i].startsWord && At(i + 1, IsVoiceless)) factor *= 0.8;
        } else {
            if (phone.stress == 0) factor *= 0.85;
            if (IsConsonant(i + 1) || (i > 0 && IsConsonant(i - 1))) factor *= 0.75;
        }
        return phone.seconds * factor;
    }

    std::size_t PhraseEnd(std::size_t begin) const {
        while (begin < phones_.size() && !At(begin, IsPause)) ++begin;
        return begin;
    }

    // Points on a falling baseline, above it at accents, and the movement at the end.
    void AddContour(std::size_t begin, std::size_t end) {
        if (begin >= end) return;
        const auto baseline = [&](std::size_t i) {
            return kStart +
                   (kEnd - kStart) * static_cast<double>(i - begin) / static_cast<double>(end - begin);
        };
        utterance_.pitch.push_back({begin, 0.0, baseline(begin)});
        std::size_t last = begin;
        for (std::size_t i = begin; i < end; ++i) {
            if (!IsVowel(i)) continue;
            last = i;
            const double accent = phones_[i].symbol.stress == 1   ? kAccent
                                  : phones_[i].symbol.stress == 2 ? 0.5 * kAccent
                                                                  : 0.0;
            utterance_.pitch.push_back({i, 0.4, baseline(i) + accent});
        }
        const char punctuation = end < phones_.size() ? phones_[end].punctuation : '.';
        const bool rises = punctuation == '?';
        if (rises) utterance_.pitch.push_back({last, 0.5, baseline(last) - 0.4});
        const bool continues = punctuation == ',' || punctuation == ';' || punctuation == ':';
        utterance_.pitch.push_back({end - 1, 1.0, rises ? kRise : continues ? kContinuation : kFall});
    }

    std::vector<WrittenPhone> phones_;
    const std::vector<std::pair<std::size_t, std::string>>& words_;
    Utterance utterance_;
};

}  // namespace

Utterance WithProsody(const PhonePhrase& phrase) { return Rules(phrase).Apply(); }

}  // namespace larynth
