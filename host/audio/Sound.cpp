// SPDX-License-Identifier: MIT
#include "host/audio/Sound.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "host/audio/Encoder.h"
#include "input/BadInput.h"
#include "input/Text.h"

namespace larynth {
namespace {

// RIFF counts bytes in 32 bits; this is what remains behind the longest header that could be written.
constexpr std::size_t kMostWavSamples = (0xFFFFFFFFU - 1024U) / sizeof(short);

// What a FLAC file's header has 36 bits for.
constexpr std::uint64_t kMostFlacSamples = (1ULL << 36) - 1;

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::vector<char> LittleEndian(std::span<const short> samples) {
    std::vector<char> bytes;
    bytes.reserve(samples.size_bytes());
    for (const short sample : samples) {
        const auto word = static_cast<std::uint16_t>(sample);
        bytes.push_back(std::bit_cast<char>(static_cast<std::uint8_t>(word & 0xFF)));
        bytes.push_back(std::bit_cast<char>(static_cast<std::uint8_t>(word >> 8)));
    }
    return bytes;
}

[[noreturn]] void RefuseSamples(const OutputFile& output, const std::string& expected, std::uint64_t found) {
    throw std::runtime_error(output.Name() + ": expected " + expected + ", found " + std::to_string(found) +
                             " samples");
}

void RequireRoom(const OutputFile& output, AudioFormat format, std::uint64_t samples) {
    if (format == AudioFormat::Wav && samples > kMostWavSamples) {
        RefuseSamples(output, "at most 4 GiB in a WAV file (.raw and .flac hold more)", samples);
    }
    if (format == AudioFormat::Flac && samples > kMostFlacSamples) {
        RefuseSamples(output, "at most 2^36 - 1 samples in a FLAC file (.raw holds more)", samples);
    }
}

void RequireSound(const OutputFile& output, AudioFormat format, std::uint64_t samples) {
    if (format == AudioFormat::Flac && samples == 0) {
        RefuseSamples(output, "a sound that is not empty in a FLAC file (.raw and .wav may be empty)",
                      samples);
    }
}

}  // namespace

void LabelFile::Add(std::uint64_t sample, std::string text) {
    Finish(sample);
    start_ = sample;
    text_ = std::move(text);
}

void LabelFile::Finish(std::uint64_t samples) {
    if (!text_.empty()) output_.Write(Seconds(start_) + '\t' + Seconds(samples) + '\t' + text_ + '\n');
    text_.clear();
}

std::string LabelFile::Seconds(std::uint64_t sample) const {
    constexpr int kDecimals = 6;
    return FixedText(static_cast<double>(sample) / sampleFreq_, kDecimals);
}

std::optional<AudioFormat> AudioFormatOf(std::string_view path) {
    if (path == "-") return AudioFormat::Raw;
    const std::string extension = LowerCase(std::filesystem::path(path).extension().string());
    if (extension == ".raw") return AudioFormat::Raw;
    if (extension == ".wav") return AudioFormat::Wav;
    if (extension == ".flac") return AudioFormat::Flac;
    return std::nullopt;
}

int HeaderRate(AudioFormat format, double sampleFreq) {
    if (format == AudioFormat::Raw) return 0;
    const double rate = std::round(sampleFreq);
    const std::string refusal =
        "this audio format cannot have a sample frequency of " + ShortestText(sampleFreq);
    if (rate < 1 || rate > std::numeric_limits<int>::max()) throw BadInput(refusal);
    try {
        // Some rates are refused with the first sample only.
        Encoder trial(nullptr, format, static_cast<int>(rate));
        trial.Append(std::array<short, 1>{});
        trial.Finish();
    } catch (const BadInput&) {
        throw;  // not the frequency is to blame
    } catch (const std::runtime_error& error) {
        throw BadInput(refusal + ": " + error.what());
    }
    return static_cast<int>(rate);
}

AudioFile::AudioFile(OutputFile& output, AudioFormat format, int headerRate,
                     std::optional<std::uint64_t> samples)
    : output_(output), format_(format), expected_(samples) {
    if (expected_) {
        RequireRoom(output, format, *expected_);
        RequireSound(output, format, *expected_);
    }
    if (format != AudioFormat::Raw) encoder_ = std::make_unique<Encoder>(&output, format, headerRate);
}

AudioFile::~AudioFile() = default;

OutputFile::Access AudioFile::AccessFor(AudioFormat format) {
    return format == AudioFormat::Raw ? OutputFile::Access::Sequential : OutputFile::Access::Seeking;
}

void AudioFile::Append(std::span<const short> samples) {
    count_ += samples.size();
    if (expected_ && count_ > *expected_) throw std::runtime_error("the input changed while it was read");
    RequireRoom(output_, format_, count_);
    if (encoder_) {
        encoder_->Append(samples);
    } else {
        output_.Write(LittleEndian(samples));
    }
}

void AudioFile::Finish() {
    if (expected_ && count_ < *expected_) throw std::runtime_error("the input changed while it was read");
    RequireSound(output_, format_, count_);
    if (encoder_) encoder_->Finish();
}

}  // namespace larynth
