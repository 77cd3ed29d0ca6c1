// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <larynth/Speech.h>

#include "host/audio/Sound.h"
#include "host/command/RenderInput.h"

namespace CLI {
class App;
}

namespace larynth {

/// `larynth render`: a frame table or a packet file becomes sound.
class RenderCommand {
  public:
    /// Adds the subcommand, which runs as soon as the command line is parsed; the object must outlive that.
    /// It raises BadInput for what the user gave, any other exception for what went wrong while working.
    explicit RenderCommand(CLI::App& program);
    RenderCommand(const RenderCommand&) = delete;
    RenderCommand& operator=(const RenderCommand&) = delete;

    enum class InputForm { Table, Targets, Packets };

  private:
    void AddFileOptions();
    void AddInputOptions();
    void AddSoundOptions();
    void Run() const;
    void RequireOwnFiles() const;
    std::unique_ptr<RenderInput> NewInput(InputFile& file) const;
    SynthesizerSettings ReadSettings(double sampleFreq) const;
    void Render(RenderInput& frames, const Extent& extent, AudioFormat format) const;
    void Summarize(const Extent& extent, double seconds) const;

    CLI::App* command_;
    std::string input_;
    std::string output_;
    std::string labels_;  // empty: none wanted
    InputForm inputForm_ = InputForm::Table;
    FrameDefaults defaults_;
    std::optional<std::string> voiceFile_;
    std::optional<std::string> waveFile_;
    SynthesizerSettings settings_;  // the files of voice and wave are not read yet
    bool verbose_ = false;
};

}  // namespace larynth
