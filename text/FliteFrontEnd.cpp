// SPDX-License-Identifier: MIT
#include "text/FliteFrontEnd.h"

#include <algorithm>
#include <array>
#include <flite/flite.h>
#include <memory>
#include <mutex>
#include <new>
#include <span>
#include <string_view>
#include <utility>

#include "text/Characters.h"

extern "C" {
void usenglish_init(cst_voice* voice);
cst_lexicon* cmu_lex_init(void);
}

namespace larynth {
namespace {

// Pitch targets come in Hz and are held between 50 and 500 Hz: numbers that leave ±8 standard deviations of
// room.
constexpr double kMean = 275.0;
constexpr double kDeviation = 28.0;

// The time that the contour takes grows with the square of its length. No sentence that somebody wrote has as
// many words.
constexpr std::size_t kMostWords = 120;

cst_utterance* MakesNoWave(cst_utterance* utterance) { return utterance; }

struct DeleteUtterance {
    void operator()(cst_utterance* utterance) const { delete_utterance(utterance); }
};
using UtterancePointer = std::unique_ptr<cst_utterance, DeleteUtterance>;

// A voice without sound: text rules, lexicon, letter-to-sound rules, durations and intonation. It lives as
// long as the process.
cst_voice* MakeVoice() {
    flite_init();
    cst_voice* const voice = new_voice();
    if (voice == nullptr) throw std::bad_alloc();
    voice->name = "none";
    usenglish_init(voice);
    cst_lexicon* const lexicon = cmu_lex_init();
    feat_set(voice->features, "lexicon", lexicon_val(lexicon));
    feat_set(voice->features, "postlex_func", uttfunc_val(lexicon->postlex));
    feat_set_float(voice->features, "int_f0_target_mean", static_cast<float>(kMean));
    feat_set_float(voice->features, "int_f0_target_stddev", static_cast<float>(kDeviation));
    feat_set_float(voice->features, "duration_stretch", 1.0F);
    feat_set(voice->features, "wave_synth_func", uttfunc_val(&MakesNoWave));
    return voice;
}

// Reference counts and regular expressions of the library are the process's own: one thread at a time.
cst_voice* Voice() {
    static cst_voice* const voice = MakeVoice();
    return voice;
}

UtterancePointer Analysed(std::span<const SpokenWord> words) {
    UtterancePointer utterance(new_utterance());
    utt_init(utterance.get(), Voice());
    cst_relation* const tokens = utt_relation_create(utterance.get(), "Token");
    for (std::size_t i = 0; i < words.size(); ++i) {
        cst_item* const token = relation_append(tokens, nullptr);
        const char punctuation[] = {words[i].punctuation, 0};
        // A capital letter would be an initial, behind which there is no pause in front of another capital.
        const bool isLastLetter = words[i].text.size() == 1 && words[i].punctuation != 0;
        item_set_string(token, "name", (isLastLetter ? Lower(words[i].text) : words[i].text).c_str());
        item_set_string(token, "whitespace", i == 0 ? "" : " ");
        item_set_string(token, "prepunctuation", "");
        item_set_string(token, "punc", punctuation);
        item_set_int(token, "word_index", static_cast<int>(i));
        if (words[i].phones.empty()) continue;
        std::string phones = words[i].phones;
        std::ranges::replace(phones, '2', '0');  // no accent: see RestoreStress
        item_set_string(token, "phones", phones.c_str());
    }
    return utt_synth_tokens(utterance.get()) != nullptr ? std::move(utterance) : nullptr;
}

// The parent of an item in a tree; null for none and for an item that is not in it.
cst_item* Parent(cst_item* item, const char* tree) {
    cst_item* const inTree = item == nullptr ? nullptr : item_as(item, tree);
    return inTree == nullptr ? nullptr : item_parent(inTree);
}

bool IsFirst(cst_item* item, const char* tree) { return item_prev(item_as(item, tree)) == nullptr; }

std::size_t WordIndex(cst_item* word, std::size_t first) {
    cst_item* const token = Parent(word, "Token");
    return token == nullptr ? PhonesOfWords::kNoWord
                            : first + static_cast<std::size_t>(item_feat_int(token, "word_index"));
}

Phone PhoneOf(cst_item* segment, double duration) {
    Phone phone;
    phone.name = item_feat_string(segment, "name");
    phone.duration = duration;
    if (cst_item* const syllable = Parent(segment, "SylStructure")) {
        phone.stress = std::string_view(ffeature_string(syllable, "stress")) == "1" ? 1 : 0;
        phone.startsSyllable = IsFirst(segment, "SylStructure");
        phone.startsWord = phone.startsSyllable && IsFirst(syllable, "SylStructure");
    }
    return phone;
}

// Targets are given in time from the beginning, which lies at `ends[0]`, where the phone `first` begins.
void AddTargets(cst_utterance* utterance, const std::vector<double>& ends, std::size_t first,
                PhonesOfWords& spoken) {
    if (utt_relation_present(utterance, "Target") == 0) return;
    for (cst_item* target = relation_head(utt_relation(utterance, "Target")); target != nullptr;
         target = item_next(target)) {
        const double time = std::min<double>(item_feat_float(target, "pos"), ends.back());
        if (time < ends.front()) continue;  // in the pause that was left out
        const auto end = std::lower_bound(ends.begin() + 1, ends.end() - 1, time);
        const double start = *(end - 1);
        const double place = *end > start ? (time - start) / (*end - start) : 0.0;
        spoken.pitch.push_back({first + static_cast<std::size_t>(end - ends.begin()) - 1, place,
                                (item_feat_float(target, "f0") - kMean) / kDeviation});
    }
}

bool AsksForYesOrNo(const std::vector<SpokenWord>& words) {
    constexpr std::array<std::string_view, 9> kAskForMore{"what", "who",   "whom", "whose", "which",
                                                          "when", "where", "why",  "how"};
    if (words.empty() || words.back().punctuation != '?') return false;
    const std::string first = Lower(words.front().text);
    return std::find(kAskForMore.begin(), kAskForMore.end(), first.substr(0, first.find('\''))) ==
           kAskForMore.end();
}

// The intonation rules fall at every end. A question for yes or no is low on its last stressed syllable and
// rises from there.
void RaiseEnd(PhonesOfWords& spoken) {
    constexpr double kLow = -0.5, kHigh = 2.2;  // standard deviations
    const auto& phones = spoken.phones;
    const auto isSaid = [](const Phone& p) { return p.name != "pau"; };
    const auto last = std::find_if(phones.rbegin(), phones.rend(), isSaid);
    const auto stressed =
        std::find_if(last, phones.rend(), [](const Phone& p) { return p.startsSyllable && p.stress > 0; });
    if (stressed == phones.rend()) return;
    const auto begin = static_cast<std::size_t>(phones.rend() - stressed) - 1;
    std::erase_if(spoken.pitch, [&](const PitchTarget& t) { return t.phone >= begin; });
    spoken.pitch.push_back({begin, 0.5, kLow});
    spoken.pitch.push_back({static_cast<std::size_t>(phones.rend() - last) - 1, 1.0, kHigh});
}

// The stress digit of a syllable in phones as a word may have them.
char StressDigit(std::string_view phones, std::size_t syllable) {
    for (const char c : phones)
        if (IsDigit(c) && syllable-- == 0) return c;
    return '0';
}

// The front end knows stress or none. A syllable with secondary stress has no accent, but is not reduced.
void RestoreStress(const std::vector<SpokenWord>& words, PhonesOfWords& spoken) {
    std::size_t syllable = 0;
    for (std::size_t i = 0; i < spoken.phones.size(); ++i) {
        Phone& phone = spoken.phones[i];
        syllable = phone.startsWord ? 0 : phone.startsSyllable ? syllable + 1 : syllable;
        const bool isSaid = spoken.words[i] != PhonesOfWords::kNoWord;
        if (isSaid && StressDigit(words[spoken.words[i]].phones, syllable) == '2') phone.stress = 2;
    }
}

// Adds what the words from `begin` on are said as, up to `end`.
void AddPhrase(const std::vector<SpokenWord>& words, std::size_t begin, std::size_t end,
               PhonesOfWords& spoken) {
    const UtterancePointer utterance = Analysed(std::span(words).subspan(begin, end - begin));
    if (!utterance || utt_relation_present(utterance.get(), "Segment") == 0) return;
    const std::size_t first = spoken.phones.size();
    std::vector<double> ends;
    double time = 0.0;
    for (cst_item* segment = relation_head(utt_relation(utterance.get(), "Segment")); segment != nullptr;
         segment = item_next(segment)) {
        const double start = std::exchange(time, item_feat_float(segment, "end"));
        cst_item* const word = Parent(Parent(segment, "SylStructure"), "SylStructure");
        const bool leadingPause = word == nullptr && spoken.phones.size() == first;
        if (!leadingPause) {
            if (ends.empty()) ends.push_back(start);
            spoken.phones.push_back(PhoneOf(segment, time - start));
            spoken.words.push_back(word == nullptr ? PhonesOfWords::kNoWord : WordIndex(word, begin));
            ends.push_back(time);
        }
    }
    if (!ends.empty()) AddTargets(utterance.get(), ends, first, spoken);
}

}  // namespace

PhonesOfWords SayWords(const std::vector<SpokenWord>& words) {
    static std::mutex oneAtATime;
    const std::scoped_lock lock(oneAtATime);
    PhonesOfWords spoken;
    for (std::size_t i = 0; i < words.size(); i += kMostWords)
        AddPhrase(words, i, std::min(i + kMostWords, words.size()), spoken);
    if (AsksForYesOrNo(words)) RaiseEnd(spoken);
    RestoreStress(words, spoken);
    return spoken;
}

}  // namespace larynth
