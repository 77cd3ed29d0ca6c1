// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "speech/PhoneTable.h"
#include "speechd/ServerLine.h"
#include "speechd/Settings.h"
#include "speechd/SpeakingThread.h"
#include "text/Lexicon.h"

namespace larynth::speechd {

/// Answers the server's commands.
class OutputModule {
  public:
    /// An empty path: no configuration. Input and output must outlive this object.
    OutputModule(CommandInput& input, EventOutput& output, std::string configurationFile);

    /// Until the server says goodbye or is gone; false when the module cannot work.
    bool Run();

  private:
    enum class Next { Command, Goodbye, Failure };
    struct Command;
    static const Command kCommands[];

    Next Initialize();
    Next TakeAudioSettings();
    Next TakeLogLevel();
    Next TakeSettings();
    Next ListVoices();
    Next SpeakMessage();
    Next SpeakCharacter();
    Next SpeakKey();
    Next SpeakIcon();
    Next StopSpeaking();
    Next PauseSpeaking();
    Next SayGoodbye();

    void ReadConfiguration();
    std::optional<std::string> OneLine();
    Next Speak(std::string text, const TextOptions& options);

    CommandInput& input_;
    EventOutput& output_;
    std::string configurationFile_;
    Settings settings_;
    std::optional<Lexicon> lexicon_;
    std::unique_ptr<SpeakingThread> speaking_;  // from INIT on
};

}  // namespace larynth::speechd
