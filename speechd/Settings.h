// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "speech/Speaker.h"
#include "speech/SpeechSettings.h"
#include "text/UtteranceReader.h"

namespace larynth::speechd {

/// How the server wants messages to be said, from one SET to the next.
class Settings {
  public:
    /// False for a value that the parameter cannot have. Parameters, voices and languages that are not known
    /// change nothing: a message in a voice that was not asked for is better than none.
    bool Set(std::string_view parameter, std::string_view value);

    const SpeechSettings& Speech() const noexcept { return speech_; }
    const TextOptions& Text() const noexcept { return text_; }
    /// The one asked for by name, else by kind, else the usual one.
    Speaker ChosenSpeaker() const;

  private:
    SpeechSettings speech_;
    TextOptions text_;
    std::string voiceName_, voiceKind_;
};

}  // namespace larynth::speechd
