// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/AudioFormat.h"
#include "host/FrameStream.h"
#include "host/FrameTable.h"
#include "host/FrameTableParser.h"
#include "host/Sound.h"
#include "host/Utterance.h"
#include "host/VoiceFile.h"
#include "host/Waveform.h"

namespace CLI {
class App;
}

namespace larynth {

/// `larynth render`: a frame table or a packet file becomes sound.
class RenderCommand {
  public:
    /// Adds the subcommand; the object must outlive the parsing.
    explicit RenderCommand(CLI::App& program);
    RenderCommand(const RenderCommand&) = delete;
    RenderCommand& operator=(const RenderCommand&) = delete;

    /// Whether the command line named this subcommand.
    bool IsChosen() const;

    /// Raises BadInput for what the user gave, any other exception for what went wrong while working.
    void Run() const;

  private:
    enum class InputForm { Table, Packets };

    /// Where the voice of the utterance comes from.
    struct VoiceChoice {
        std::optional<VoiceSettings> voice;
        std::optional<Waveform> wave;  // of a wave-table source that displaces any other
    };

    void AddFileOptions();
    void AddInputOptions();
    void AddSoundOptions();
    AudioFormat ChosenFormat() const;
    Utterance ReadUtterance() const;
    VoiceChoice ReadVoice() const;
    Sound Render(const Utterance& utterance, const VoiceChoice& choice) const;
    void Write(const Sound& sound, double sampleFreq, AudioFormat format, int headerRate) const;
    void Summarize(const Sound& sound, double sampleFreq, double seconds) const;

    CLI::App* command_;
    std::string input_;
    std::string output_;
    std::string labels_;  // empty: none wanted
    InputForm inputForm_ = InputForm::Table;
    FrameTableDefaults defaults_;
    std::optional<std::string> voiceFile_;
    std::optional<std::string> waveFile_;
    TractForm tract_ = TractForm::Resonator;
    std::optional<double> volume_;
    std::optional<double> outputGain_;
    std::optional<std::uint32_t> seed_;
    bool verbose_ = false;
};

}  // namespace larynth
