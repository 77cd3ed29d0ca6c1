// SPDX-License-Identifier: MIT
#include "text/SentenceSpeaker.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "text/FliteFrontEnd.h"
#include "text/Normalization.h"

namespace larynth {
namespace {

// A sentence's tokens, and in front of which of them its marks and breaks stand.
struct Tokens {
    std::vector<Token> tokens;
    std::vector<std::pair<std::size_t, const Annotation*>> annotations;
};

class TokenMaker {
  public:
    explicit TokenMaker(const MarkedText& sentence) : sentence_(sentence), style_(sentence.style) {}

    Tokens Make() {
        auto annotation = sentence_.annotations.begin();
        const auto end = sentence_.annotations.end();
        for (std::size_t i = 0; i <= sentence_.text.size(); ++i) {
            const bool wordEnds = i == sentence_.text.size() || sentence_.text[i] == ' ';
            if (wordEnds && style_->phones.empty()) Finish();
            for (; annotation != end && annotation->place == i; ++annotation) Take(*annotation);
            if (i == sentence_.text.size()) break;
            if (!wordEnds || !style_->phones.empty()) word_ += sentence_.text[i];
        }
        Finish();
        return std::move(made_);
    }

  private:
    // A mark within a word stands in front of it; another way of speaking begins a new one.
    void Take(const Annotation& annotation) {
        if (annotation.kind == Annotation::Kind::Style) {
            Finish();
            style_ = annotation.style;
            return;
        }
        if (annotation.kind == Annotation::Kind::Break) Finish();
        made_.annotations.emplace_back(made_.tokens.size(), &annotation);
    }

    void Finish() {
        if (!word_.empty()) made_.tokens.push_back({std::exchange(word_, {}), style_});
    }

    const MarkedText& sentence_;
    std::shared_ptr<const Style> style_;
    std::string word_;
    Tokens made_;
};

// The word without the punctuation around it, if that leaves anything.
std::string WordAsWritten(std::string_view written) {
    constexpr std::string_view kPunctuation = ".,;:!?\"'()[]{}";
    const std::size_t first = written.find_first_not_of(kPunctuation);
    if (first == std::string_view::npos) return std::string(written);
    return std::string(written.substr(first, written.find_last_not_of(kPunctuation) - first + 1));
}

class Speaker {
  public:
    Speaker(const Tokens& tokens, const std::vector<SpokenWord>& words, PhonesOfWords&& spoken)
        : tokens_(tokens), words_(words), spoken_(std::move(spoken)), heard_(tokens.tokens.size()) {
        for (const SpokenWord& word : words) heard_[word.source] = true;
    }

    Utterance Speak() {
        for (std::size_t i = 0; i < spoken_.phones.size(); ++i) {
            const std::size_t word = spoken_.words[i];
            if (word != PhonesOfWords::kNoWord) BeginTokens(words_[word].source + 1);
            places_.push_back(utterance_.phones.size());
            utterance_.phones.push_back(std::move(spoken_.phones[i]));
            utterance_.phones.back().prosody = ProsodyHere();
        }
        BeginTokens(tokens_.tokens.size());
        GiveAnnotations(tokens_.tokens.size());
        for (PitchTarget target : spoken_.pitch) {
            target.phone = places_[target.phone];
            utterance_.pitch.push_back(target);
        }
        return std::move(utterance_);
    }

  private:
    // Everything in front of the tokens below `end` that has not been given yet.
    void BeginTokens(std::size_t end) {
        for (; begun_ < end; ++begun_) {
            GiveAnnotations(begun_);
            if (!heard_[begun_]) continue;
            const std::string word = WordAsWritten(tokens_.tokens[begun_].written);
            utterance_.marks.push_back({utterance_.phones.size(), Mark::Kind::Word, word});
        }
    }

    void GiveAnnotations(std::size_t token) {
        for (; given_ < tokens_.annotations.size() && tokens_.annotations[given_].first <= token; ++given_) {
            const Annotation& annotation = *tokens_.annotations[given_].second;
            if (annotation.kind == Annotation::Kind::Break)
                Pause(annotation.seconds);
            else
                utterance_.marks.push_back({utterance_.phones.size(), Mark::Kind::Named, annotation.name});
        }
    }

    // A pause that is there anyway takes the length that is asked for.
    void Pause(double seconds) {
        const bool paused = !utterance_.phones.empty() && utterance_.phones.back().name == "pau";
        if (!paused && seconds <= 0.0) return;
        if (!paused) {
            utterance_.phones.emplace_back();
            utterance_.phones.back().name = "pau";
        }
        utterance_.phones.back().duration = seconds;
        utterance_.phones.back().prosody = {};
    }

    Prosody ProsodyHere() const {
        if (begun_ == 0) return {};
        return tokens_.tokens[begun_ - 1].style->prosody;
    }

    const Tokens& tokens_;
    const std::vector<SpokenWord>& words_;
    PhonesOfWords spoken_;
    std::vector<bool> heard_;  // tokens that have words
    Utterance utterance_;
    std::vector<std::size_t> places_;  // of the spoken phones in the utterance
    std::size_t begun_ = 0;            // tokens
    std::size_t given_ = 0;            // annotations
};

}  // namespace

Utterance SpeakSentence(const MarkedText& sentence, const TextOptions& options) {
    const Tokens tokens = TokenMaker(sentence).Make();
    const std::vector<SpokenWord> words = Normalized(tokens.tokens, options);
    return Speaker(tokens, words, words.empty() ? PhonesOfWords{} : SayWords(words)).Speak();
}

}  // namespace larynth
