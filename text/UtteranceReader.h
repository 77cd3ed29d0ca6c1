// SPDX-License-Identifier: MIT
/// From text to phones, sentence by sentence.
#pragma once

#include <istream>
#include <memory>
#include <string>

#include "speech/Utterance.h"
#include "text/PhoneNames.h"

namespace larynth {

class Lexicon;

/// What a text is written in.
enum class TextForm {
    Text,     ///< English, UTF-8.
    Arpabet,  ///< Phones: "HH AH0 L OW1 | W ER1 L D ."
    Ipa,      ///< Phones: "həˈloʊ ˈwɜːld."
    Ssml,     ///< Speech Synthesis Markup Language 1.1 with English text.
};

/// How much of the punctuation is said by name.
enum class Punctuation { None, Some, Most, All };

/// How capital letters are announced.
enum class Capitals { None, Spell };

struct TextOptions {
    TextForm form = TextForm::Text;
    Punctuation punctuation = Punctuation::None;
    Capitals capitals = Capitals::None;
    bool spell = false;  ///< Letter by letter.
    double meanPitch =
        110.0;  ///< The speaker's mean F0, Hz: what absolute pitches of SSML are compared with.
    const Lexicon* lexicon = nullptr;  ///< The user's own pronunciations; must outlive the reader.
    const PhoneSet* phones =
        nullptr;  ///< What ARPAbet and IPA may name; null: English. Must outlive the reader.
};

/// Reads a text of any length and gives its utterances one after the other.
class UtteranceReader {
  public:
    /// `name` serves messages. The input must live as long as this object.
    UtteranceReader(std::istream& input, std::string name, const TextOptions& options);
    UtteranceReader(const UtteranceReader&) = delete;
    UtteranceReader& operator=(const UtteranceReader&) = delete;
    ~UtteranceReader();

    /// Moves to the next utterance, which has at least one phone or mark; false behind the last one. Raises
    /// BadInput, with the place, for what cannot be said.
    bool Next();
    const Utterance& Current() const noexcept;

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace larynth
