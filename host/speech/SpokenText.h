// SPDX-License-Identifier: MIT
/// A text on its way to speech: how it is read, who speaks, and the files of the user's own for both.
#pragma once

#include <istream>
#include <optional>
#include <string>
#include <string_view>

#include "speech/PhoneTable.h"
#include "speech/Speaker.h"
#include "speech/SpeechSettings.h"
#include "speech/Utterance.h"
#include "text/Lexicon.h"
#include "text/UtteranceReader.h"

namespace larynth {

/// The form that a user calls text, arpabet, ipa or ssml; nothing for another name.
std::optional<TextForm> FindTextForm(std::string_view name);

/// The speaker of this name, or the one in the file of this name. Raises BadInput for what is neither, and
/// for what the file says wrong; `what` names the argument in messages.
Speaker FindSpeaker(const std::string& nameOrFile, const std::string& what);

/// Who speaks and how. The table must outlive what is made with it.
struct SpeechStyle {
    const PhoneTable& table;
    Speaker speaker;
    SpeechSettings settings;
};

struct SpokenTextOptions {
    TextForm form = TextForm::Text;
    std::string lexiconFile, phoneTableFile;  ///< Empty: none.
    Speaker speaker{};
    SpeechSettings settings{};
};

/// The utterances of a text. Raises BadInput, with the place, for what cannot be said or read.
class SpokenText {
  public:
    /// `name` serves messages. The text must live as long as this object. Moves to the first utterance;
    /// BadInput when there is none.
    SpokenText(std::istream& text, const std::string& name, const SpokenTextOptions& options);
    SpokenText(const SpokenText&) = delete;
    SpokenText& operator=(const SpokenText&) = delete;

    const Utterance& Current() const noexcept { return reader_.Current(); }
    bool Next() { return reader_.Next(); }  ///< False behind the last one.

    const SpeechStyle& Style() const noexcept { return style_; }  ///< Lives as long as this object.

  private:
    TextOptions ReaderOptions(const SpokenTextOptions& options) const;

    std::optional<PhoneTable> ownTable_;
    PhoneSet ownPhones_;
    std::optional<Lexicon> lexicon_;
    SpeechStyle style_;
    UtteranceReader reader_;
};

}  // namespace larynth
