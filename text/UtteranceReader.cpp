// SPDX-License-Identifier: MIT
#include "text/UtteranceReader.h"

#include <utility>

#include "text/Characters.h"
#include "text/PhoneInput.h"
#include "text/SentenceSpeaker.h"
#include "text/Sentences.h"
#include "text/Ssml.h"

namespace larynth {
namespace {

/// Where utterances come from: one way for each form of text.
class Source {
  public:
    virtual ~Source() = default;
    virtual bool Next(Utterance& utterance) = 0;
};

/// Sentences that are to be analysed.
class SentenceSource : public Source {
  public:
    explicit SentenceSource(const TextOptions& options) : options_(options) {}

    bool Next(Utterance& utterance) final {
        for (MarkedText sentence; NextSentence(sentence);) {
            utterance = SpeakSentence(sentence, options_);
            if (!utterance.phones.empty() || !utterance.marks.empty()) return true;
        }
        return false;
    }

  private:
    virtual bool NextSentence(MarkedText& sentence) = 0;

    const TextOptions& options_;
};

class PlainText final : public SentenceSource {
  public:
    PlainText(std::istream& input, const TextOptions& options)
        : SentenceSource(options), characters_(input) {}

  private:
    bool NextSentence(MarkedText& sentence) override {
        while (!cutter_.HasSentence() && characters_.Next()) cutter_.Add(characters_.Current());
        if (!cutter_.HasSentence()) cutter_.Finish();
        return cutter_.Take(sentence);
    }

    CharacterStream characters_;
    SentenceCutter cutter_;
};

class MarkedUpText final : public SentenceSource {
  public:
    MarkedUpText(std::istream& input, std::string name, const TextOptions& options)
        : SentenceSource(options), reader_(input, std::move(name), options.meanPitch) {}

  private:
    bool NextSentence(MarkedText& sentence) override { return reader_.Next(sentence); }

    SsmlReader reader_;
};

class Phones final : public Source {
  public:
    Phones(std::istream& input, std::string name, const TextOptions& options)
        : reader_(input, std::move(name), options) {}

    bool Next(Utterance& utterance) override { return reader_.Next(utterance); }

  private:
    PhoneReader reader_;
};

std::unique_ptr<Source> MakeSource(std::istream& input, std::string name, const TextOptions& options) {
    switch (options.form) {
        case TextForm::Text:
            return std::make_unique<PlainText>(input, options);
        case TextForm::Ssml:
            return std::make_unique<MarkedUpText>(input, std::move(name), options);
        case TextForm::Arpabet:
        case TextForm::Ipa:
            break;
    }
    return std::make_unique<Phones>(input, std::move(name), options);
}

}  // namespace

class UtteranceReader::Implementation {
  public:
    Implementation(std::istream& input, std::string name, const TextOptions& options)
        : options_(options), source_(MakeSource(input, std::move(name), options_)) {}

    bool Next() { return source_->Next(current_); }
    const Utterance& Current() const { return current_; }

  private:
    TextOptions options_;
    Utterance current_;
    std::unique_ptr<Source> source_;
};

UtteranceReader::UtteranceReader(std::istream& input, std::string name, const TextOptions& options)
    : implementation_(std::make_unique<Implementation>(input, std::move(name), options)) {}

UtteranceReader::~UtteranceReader() = default;

bool UtteranceReader::Next() { return implementation_->Next(); }

const Utterance& UtteranceReader::Current() const noexcept { return implementation_->Current(); }

}  // namespace larynth
