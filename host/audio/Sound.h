// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace larynth {

/// A marker's text at the place where it came out.
struct Label {
    std::size_t sample;  ///< Number of samples in front of it.
    std::string text;    ///< UTF-8.
};

/// A rendered utterance: 16-bit samples, one channel, and its markers in order.
struct Sound {
    std::vector<short> samples;
    std::vector<Label> labels;
};

/// The sound's markers, one a line: start, end, text, separated by tabs; times in seconds with six decimals.
/// A label ends where the next one starts, or with the sound.
std::string LabelText(const Sound& sound, double sampleFreq);

/// How 16-bit samples of one channel become a file.
enum class AudioFormat { Raw, Wav, Flac };  // Raw: little-endian samples and nothing else

/// By the path's extension, in upper or lower case; "-" is Raw. Nothing for any other extension.
std::optional<AudioFormat> AudioFormatOf(std::string_view path);

/// The whole rate nearest to `sampleFreq` (Hz), as the file's header holds it; 0 for Raw, which has no
/// header. Raises BadInput for a frequency that the format cannot have.
int HeaderRate(AudioFormat format, double sampleFreq);

/// The file's bytes. Raises std::runtime_error for a sound that the format cannot hold.
std::vector<char> EncodeAudio(AudioFormat format, int headerRate, std::span<const short> samples);

}  // namespace larynth
