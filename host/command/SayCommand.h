// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "speech/SpeechSynthesizer.h"
#include "text/UtteranceReader.h"

namespace CLI {
class App;
}

namespace larynth {

class InputFile;
class SpeechOutput;
struct SpeechStyle;

/// `larynth say`: a text becomes speech.
class SayCommand {
  public:
    /// Adds the subcommand, which runs as soon as the command line is parsed; the object must outlive that.
    /// It raises BadInput for what the user gave, any other exception for what went wrong while working.
    explicit SayCommand(CLI::App& program);
    SayCommand(const SayCommand&) = delete;
    SayCommand& operator=(const SayCommand&) = delete;

  private:
    void AddInputOptions();
    void AddOutputOptions();
    void AddVoiceOptions();
    void Run() const;
    void RequireOwnFiles() const;
    std::string TextFile() const;
    void SayAll(std::istream& text, const std::string& name, const InputFile* file) const;
    std::vector<std::unique_ptr<SpeechOutput>> NewOutputs(const SpeechStyle& style) const;

    CLI::App* command_;
    std::vector<std::string> words_;
    std::string textFile_, lexiconFile_, phoneTableFile_;  // empty: none
    std::string output_, labels_, table_;                  // empty: not wanted
    std::string voice_ = Speaker::Names().front();         // or a file
    TextForm form_ = TextForm::Text;
    SpeechSettings settings_;
    bool listsPhones_ = false, listsVoices_ = false;
};

}  // namespace larynth
