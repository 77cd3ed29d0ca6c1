// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/Files.h"

namespace larynth {

/// The markers of a sound, one a line: start, end, text, separated by tabs; times in seconds with six
/// decimals. A label ends where the next one starts, or with the sound. Its functions raise what OutputFile
/// raises.
class LabelFile {
  public:
    /// The output must live as long as this object.
    LabelFile(OutputFile& output, double sampleFreq) : output_(output), sampleFreq_(sampleFreq) {}

    /// A marker's text (UTF-8) behind `sample` samples.
    void Add(std::uint64_t sample, std::string text);
    /// The sound has `samples` samples and no more markers.
    void Finish(std::uint64_t samples);

  private:
    std::string Seconds(std::uint64_t sample) const;

    OutputFile& output_;
    double sampleFreq_;  // Hz
    std::uint64_t start_ = 0;
    std::string text_;  // of the label that has no end yet; empty: none
};

/// How 16-bit samples of one channel become a file.
enum class AudioFormat { Raw, Wav, Flac };  // Raw: little-endian samples and nothing else

/// By the path's extension, in upper or lower case; "-" is Raw. Nothing for any other extension.
std::optional<AudioFormat> AudioFormatOf(std::string_view path);

/// The whole rate nearest to `sampleFreq` (Hz), as the file's header holds it; 0 for Raw, which has no
/// header. Raises BadInput for a frequency that the format cannot have.
int HeaderRate(AudioFormat format, double sampleFreq);

/// A sound of one channel as a file, written as it comes. All functions raise std::runtime_error.
class AudioFile {
  public:
    /// For a sound of `samples` samples, or of as many as will come; the format must be able to hold them.
    /// The output, which must take bytes as the format needs it, must live as long as this object.
    AudioFile(OutputFile& output, AudioFormat format, int headerRate, std::optional<std::uint64_t> samples);
    ~AudioFile();

    /// What the output of a format must be opened for.
    static OutputFile::Access AccessFor(AudioFormat format);

    void Append(std::span<const short> samples);
    /// Completes the file; it must have as many samples as were announced.
    void Finish();

  private:
    OutputFile& output_;
    AudioFormat format_;
    std::unique_ptr<class Encoder> encoder_;  // null: no header, the samples alone
    std::optional<std::uint64_t> expected_;   // samples
    std::uint64_t count_ = 0;                 // samples that came
};

}  // namespace larynth
