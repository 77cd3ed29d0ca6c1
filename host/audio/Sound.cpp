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
#include <memory>
#include <sndfile.h>
#include <stdexcept>

#include "host/tables/Text.h"

namespace larynth {
namespace {

// RIFF counts bytes in 32 bits; this is what remains behind the longest header that could be written.
constexpr std::size_t kMostWavSamples = (0xFFFFFFFFU - 1024U) / sizeof(short);

// A file in memory, as libsndfile's callbacks see it.
struct MemoryFile {
    std::vector<char> bytes;
    std::size_t position = 0;
};

MemoryFile& FileOf(void* user) { return *static_cast<MemoryFile*>(user); }

sf_count_t Length(void* user) { return static_cast<sf_count_t>(FileOf(user).bytes.size()); }

sf_count_t Tell(void* user) { return static_cast<sf_count_t>(FileOf(user).position); }

sf_count_t Seek(sf_count_t offset, int whence, void* user) {
    const sf_count_t from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? Tell(user) : Length(user);
    FileOf(user).position = static_cast<std::size_t>(std::max<sf_count_t>(0, from + offset));
    return Tell(user);
}

sf_count_t Read(void* data, sf_count_t count, void* user) {
    MemoryFile& file = FileOf(user);
    const std::size_t left = file.bytes.size() - std::min(file.position, file.bytes.size());
    const std::size_t size = std::min(static_cast<std::size_t>(count), left);
    std::copy_n(file.bytes.data() + file.position, size, static_cast<char*>(data));
    file.position += size;
    return static_cast<sf_count_t>(size);
}

sf_count_t Write(const void* data, sf_count_t count, void* user) try {
    MemoryFile& file = FileOf(user);
    const std::size_t end = file.position + static_cast<std::size_t>(count);
    if (end > file.bytes.size()) file.bytes.resize(end);
    std::copy_n(static_cast<const char*>(data), count, file.bytes.data() + file.position);
    file.position = end;
    return count;
} catch (const std::bad_alloc&) {
    return 0;  // libsndfile is C: a short write tells it
}

std::vector<char> EncodeRaw(std::span<const short> samples) {
    std::vector<char> bytes;
    bytes.reserve(samples.size_bytes());
    for (const short sample : samples) {
        const auto word = static_cast<std::uint16_t>(sample);
        bytes.push_back(std::bit_cast<char>(static_cast<std::uint8_t>(word & 0xFF)));
        bytes.push_back(std::bit_cast<char>(static_cast<std::uint8_t>(word >> 8)));
    }
    return bytes;
}

std::vector<char> EncodeWithHeader(int containerFormat, int rate, std::span<const short> samples) {
    SF_VIRTUAL_IO callbacks{Length, Seek, Read, Write, Tell};
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = 1;
    info.format = containerFormat | SF_FORMAT_PCM_16;
    MemoryFile file;
    std::unique_ptr<SNDFILE, decltype(&sf_close)> encoder(
        sf_open_virtual(&callbacks, SFM_WRITE, &info, &file), &sf_close);
    if (!encoder) throw std::runtime_error(sf_strerror(nullptr));
    const auto count = static_cast<sf_count_t>(samples.size());
    if (sf_write_short(encoder.get(), samples.data(), count) != count) {
        throw std::runtime_error(sf_strerror(encoder.get()));
    }
    if (const int error = sf_close(encoder.release()); error != SF_ERR_NO_ERROR) {
        throw std::runtime_error(sf_error_number(error));
    }
    return std::move(file.bytes);
}

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

}  // namespace

std::string LabelText(const Sound& sound, double sampleFreq) {
    constexpr int kDecimals = 6;
    const auto seconds = [&](std::size_t sample) {
        return FixedText(static_cast<double>(sample) / sampleFreq, kDecimals);
    };
    std::string text;
    for (std::size_t i = 0; i < sound.labels.size(); ++i) {
        const bool last = i + 1 == sound.labels.size();
        const std::size_t end = last ? sound.samples.size() : sound.labels[i + 1].sample;
        text += seconds(sound.labels[i].sample) + '\t' + seconds(end) + '\t' + sound.labels[i].text + '\n';
    }
    return text;
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
        EncodeAudio(format, static_cast<int>(rate), std::array<short, 1>{});
    } catch (const std::runtime_error& error) {
        throw BadInput(refusal + ": " + error.what());
    }
    return static_cast<int>(rate);
}

std::vector<char> EncodeAudio(AudioFormat format, int headerRate, std::span<const short> samples) {
    if (format == AudioFormat::Raw) return EncodeRaw(samples);
    if (format == AudioFormat::Wav && samples.size() > kMostWavSamples) {
        throw std::runtime_error("a WAV file holds at most 4 GiB; use .raw or .flac");
    }
    if (format == AudioFormat::Flac && samples.empty()) {
        throw std::runtime_error("a FLAC file cannot be empty, and this utterance has no samples");
    }
    return EncodeWithHeader(format == AudioFormat::Wav ? SF_FORMAT_WAV : SF_FORMAT_FLAC, headerRate, samples);
}

}  // namespace larynth
