// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace larynth {

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
