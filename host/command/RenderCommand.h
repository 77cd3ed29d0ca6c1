// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <larynth/Speech.h>

#include "host/audio/Sound.h"
#include "host/command/RenderFolder.h"
#include "host/command/RenderInput.h"

namespace CLI {
class App;
}

namespace larynth {

/// `larynth render`: frame tables, targets and packet files become sound.
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
    void AddFolderOptions();
    void AddInputOptions();
    void AddSoundOptions();
    void Run() const;
    bool IsForFolder() const;
    void RenderAll() const;
    /// With a bar and a summary on a terminal if it is the only one.
    void RenderOne(const RenderJob& job, bool isAlone) const;
    void RequireOwnFiles(const RenderJob& job) const;
    std::unique_ptr<RenderInput> NewInput(InputFile& file) const;
    SynthesizerSettings ReadSettings(double sampleFreq) const;
    void Render(RenderInput& frames, const Extent& extent, const RenderJob& job, bool showsBar) const;

    CLI::App* command_;
    std::vector<std::string> inputs_;
    std::string output_;
    std::string labels_;  // empty: none wanted
    RenderFolder folder_;
    InputForm inputForm_ = InputForm::Table;
    FrameDefaults defaults_;
    std::optional<std::string> voiceFile_;
    std::optional<std::string> waveFile_;
    SynthesizerSettings settings_;  // the files of voice and wave are not read yet
    bool verbose_ = false;
};

}  // namespace larynth
