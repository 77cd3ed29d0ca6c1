// SPDX-License-Identifier: MIT
/// What `larynth say` makes of utterances.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/Files.h"
#include "host/audio/Sound.h"
#include "host/command/Player.h"
#include "host/speech/SpokenText.h"
#include "speech/SpeechFrame.h"
#include "speech/SpeechSynthesizer.h"

namespace larynth {

/// Takes the utterances of a text one after the other.
class SpeechOutput {
  public:
    SpeechOutput() = default;
    SpeechOutput(const SpeechOutput&) = delete;
    SpeechOutput& operator=(const SpeechOutput&) = delete;
    virtual ~SpeechOutput() = default;

    virtual void Say(const Utterance& utterance) = 0;
    /// There are no more utterances. The files that are complete then are added to those to be committed.
    virtual void Finish(std::vector<OutputFile*>& files) = 0;
};

/// The phones on standard output, in the notation of `--input arpabet`, a line an utterance.
class PhoneList final : public SpeechOutput {
  public:
    explicit PhoneList(const PhoneTable& table) : table_(table) {}
    void Say(const Utterance& utterance) override;
    void Finish(std::vector<OutputFile*>& files) override;

  private:
    std::string Line(const Utterance& utterance) const;

    const PhoneTable& table_;
    OutputFile output_{"-"};
};

/// The frames as a table for `larynth render`.
class FrameList final : public SpeechOutput {
  public:
    FrameList(const SpeechStyle& style, const std::string& path);
    void Say(const Utterance& utterance) override;
    void Finish(std::vector<OutputFile*>& files) override;

  private:
    void AddRow(int length, const SpeechFrame& frame, const std::string& marker);

    SpeechStyle style_;
    OutputFile output_;
    std::optional<SpeechFrame> last_;  // of the row before
};

/// The sound, into a file or played, and its marks as labels.
class SoundOutput final : public SpeechOutput {
  public:
    /// An empty path of the sound stands for the loudspeaker, one of the labels for none.
    SoundOutput(const SpeechStyle& style, const std::string& soundPath, const std::string& labelPath);
    void Say(const Utterance& utterance) override;
    void Finish(std::vector<OutputFile*>& files) override;

  private:
    SpeechSynthesizer synthesizer_;
    std::optional<OutputFile> file_, labelFile_;
    std::optional<AudioFile> audio_;
    std::optional<LabelFile> labels_;
    std::optional<Player> player_;
    std::uint64_t samples_ = 0;
};

}  // namespace larynth
