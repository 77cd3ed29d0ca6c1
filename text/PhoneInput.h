// SPDX-License-Identifier: MIT
/// Phones that somebody else has found, as ARPAbet or IPA.
#pragma once

#include <exception>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

#include "speech/Utterance.h"
#include "text/Characters.h"
#include "text/PhoneProsody.h"
#include "text/UtteranceReader.h"

namespace larynth {

/// Reads phones and gives them rhythm and intonation by rule. ARPAbet: symbols between blanks, stress digits
/// at the vowels, | between words. IPA: blanks between words, ˈ and ˌ in front of a syllable. In both, . ! ?
/// end an utterance and , ; : are pauses.
class PhoneReader {
  public:
    /// `name` serves messages. The input must live as long as this object.
    PhoneReader(std::istream& input, std::string name, const TextOptions& options);

    /// The next utterance; false behind the last one. Raises BadInput, with the place, for what is no phone;
    /// what came before it is given first.
    bool Next(Utterance& utterance);

  private:
    bool ReadToken();
    void AddToken();

    CharacterStream characters_;
    std::string name_;
    TextForm form_;
    const PhoneSet* phones_;
    std::string token_;
    std::int64_t line_ = 0, column_ = 0;  // of the token
    PhonePhrase phrase_;
    bool complete_ = false;
    bool wordEnded_ = true;
    std::exception_ptr failure_;
};

/// The phones of one word as flite's front end takes them, "hh ax l ow1"; nothing, and `bad` from the first
/// one that is none on, for others. `bad` is empty for a text without phones.
std::optional<std::string> PhonesOfWord(std::string_view text, TextForm form, std::string& bad);

}  // namespace larynth
