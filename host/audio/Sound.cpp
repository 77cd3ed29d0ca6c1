// SPDX-License-Identifier: MIT
#include "host/audio/Sound.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <limits>
#include <memory>
#include <sndfile.h>
#include <stdexcept>
#include <utility>
#include <vector>

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

/// Samples on their way through libsndfile into an output.
class Encoder {
  public:
    /// Without output the bytes go nowhere.
    Encoder(OutputFile* output, AudioFormat format, int headerRate) : output_(output) {
        SF_VIRTUAL_IO callbacks{Length, Seek, Read, Write, Tell};
        SF_INFO info{};
        info.samplerate = headerRate;
        info.channels = 1;
        info.format = (format == AudioFormat::Wav ? SF_FORMAT_WAV : SF_FORMAT_FLAC) | SF_FORMAT_PCM_16;
        file_.reset(sf_open_virtual(&callbacks, SFM_WRITE, &info, this));
        if (!file_) Fail(sf_strerror(nullptr));
    }

    void Append(std::span<const short> samples) {
        const auto count = static_cast<sf_count_t>(samples.size());
        if (sf_write_short(file_.get(), samples.data(), count) != count || failure_) {
            Fail(sf_strerror(file_.get()));
        }
    }

    void Finish() {
        const int error = sf_close(file_.release());
        if (error != SF_ERR_NO_ERROR || failure_) Fail(sf_error_number(error));
    }

  private:
    static Encoder& Of(void* user) { return *static_cast<Encoder*>(user); }
    static sf_count_t Length(void* user) { return Of(user).length_; }
    static sf_count_t Tell(void* user) { return Of(user).position_; }
    static sf_count_t Read(void*, sf_count_t, void*) { return 0; }  // nobody reads a file that is written

    static sf_count_t Seek(sf_count_t offset, int whence, void* user) {
        Encoder& encoder = Of(user);
        const sf_count_t from = whence == SEEK_SET   ? 0
                                : whence == SEEK_CUR ? encoder.position_
                                                     : encoder.length_;
        const sf_count_t target = std::max<sf_count_t>(0, from + offset);
        const bool moves = target != encoder.position_;
        encoder.Do([&](OutputFile& output) {
            if (moves) output.Seek(static_cast<std::uint64_t>(target));
        });
        encoder.position_ = target;
        return target;
    }

    static sf_count_t Write(const void* data, sf_count_t count, void* user) {
        Encoder& encoder = Of(user);
        encoder.Do([&](OutputFile& output) {
            output.Write({static_cast<const char*>(data), static_cast<std::size_t>(count)});
        });
        encoder.position_ += count;
        encoder.length_ = std::max(encoder.length_, encoder.position_);
        return encoder.failure_ ? 0 : count;
    }

    // libsndfile is C: exceptions go around it.
    template <class Deed>
    void Do(Deed deed) noexcept try {
        if (output_ != nullptr && !failure_) deed(*output_);
    } catch (...) {
        failure_ = std::current_exception();
    }

    [[noreturn]] void Fail(const char* message) const {
        if (failure_) std::rethrow_exception(failure_);
        throw std::runtime_error(message);
    }

    OutputFile* output_;
    sf_count_t position_ = 0, length_ = 0;
    std::exception_ptr failure_;
    std::unique_ptr<SNDFILE, decltype(&sf_close)> file_{nullptr, &sf_close};
};

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
