// SPDX-License-Identifier: MIT
#include "text/UtteranceReader.h"

#include "input/BadInput.h"
#include "text/Characters.h"
#include "text/SentenceSpeaker.h"
#include "text/Sentences.h"

namespace larynth {
namespace {

/// Where utterances come from: one way for each form of text.
class Source {
  public:
    virtual ~Source() = default;
    virtual bool Next(Utterance& utterance) = 0;
};

class PlainText final : public Source {
  public:
    PlainText(std::istream& input, const TextOptions& options) : characters_(input), options_(options) {}

    bool Next(Utterance& utterance) override {
        MarkedText sentence;
        for (;;) {
            while (!cutter_.HasSentence() && characters_.Next()) cutter_.Add(characters_.Current());
            if (!cutter_.HasSentence()) cutter_.Finish();
            if (!cutter_.Take(sentence)) return false;
            utterance = SpeakSentence(sentence, options_);
            if (!utterance.phones.empty() || !utterance.marks.empty()) return true;
        }
    }

  private:
    CharacterStream characters_;
    const TextOptions& options_;
    SentenceCutter cutter_;
};

}  // namespace

class UtteranceReader::Implementation {
  public:
    Implementation(std::istream& input, const TextOptions& options)
        : options_(options), source_(std::make_unique<PlainText>(input, options_)) {}

    bool Next() { return source_->Next(current_); }
    const Utterance& Current() const { return current_; }

  private:
    TextOptions options_;
    Utterance current_;
    std::unique_ptr<Source> source_;
};

UtteranceReader::UtteranceReader(std::istream& input, std::string, const TextOptions& options)
    : implementation_(std::make_unique<Implementation>(input, options)) {}

UtteranceReader::~UtteranceReader() = default;

bool UtteranceReader::Next() { return implementation_->Next(); }

const Utterance& UtteranceReader::Current() const noexcept { return implementation_->Current(); }

}  // namespace larynth
