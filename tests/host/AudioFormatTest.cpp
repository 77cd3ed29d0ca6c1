// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sndfile.h>

#include "host/AudioFormat.h"
#include "host/Errors.h"
#include "tests/host/CommandFolder.h"

namespace larynth {
namespace {

using testing::ElementsAreArray;

const std::vector<short> kSamples{0, 1, -1, 256, -257, 32767, -32768};

// Read back from a file by libsndfile.
struct ReadBack {
    SF_INFO info{};
    std::vector<short> samples;
};

ReadBack Read(const std::vector<char>& bytes) {
    const test::CommandFolder folder;
    folder.Write("sound", {bytes.begin(), bytes.end()});
    ReadBack read;
    SNDFILE* file = sf_open(folder.Path("sound").c_str(), SFM_READ, &read.info);
    if (file == nullptr) return read;
    read.samples.resize(static_cast<std::size_t>(read.info.frames));
    EXPECT_EQ(sf_read_short(file, read.samples.data(), read.info.frames), read.info.frames);
    sf_close(file);
    return read;
}

TEST(AudioFormats, FilesReadBackAsTheSameSamples) {
    for (const auto& [format, container] :
         {std::pair{AudioFormat::Wav, SF_FORMAT_WAV}, std::pair{AudioFormat::Flac, SF_FORMAT_FLAC}}) {
        const ReadBack read = Read(EncodeAudio(format, 11025, kSamples));
        EXPECT_EQ(read.info.format, container | SF_FORMAT_PCM_16);
        EXPECT_EQ(read.info.channels, 1);
        EXPECT_EQ(read.info.samplerate, 11025);
        EXPECT_THAT(read.samples, ElementsAreArray(kSamples));
    }
}

TEST(AudioFormats, RawIsLittleEndianAndNothingElse) {
    EXPECT_THAT(EncodeAudio(AudioFormat::Raw, 0, std::vector<short>{1, -2, 0x1234}),
                ElementsAreArray({'\x01', '\x00', '\xFE', '\xFF', '\x34', '\x12'}));
}

TEST(AudioFormats, AnEmptySoundIsAnEmptyFileWhereTheFormatHasThat) {
    EXPECT_TRUE(EncodeAudio(AudioFormat::Raw, 0, {}).empty());
    EXPECT_EQ(Read(EncodeAudio(AudioFormat::Wav, 8000, {})).info.samplerate, 8000);
    EXPECT_THROW(EncodeAudio(AudioFormat::Flac, 8000, {}), std::runtime_error);
}

TEST(AudioFormats, TheExtensionDecides) {
    EXPECT_EQ(AudioFormatOf("-"), AudioFormat::Raw);
    EXPECT_EQ(AudioFormatOf("a.b/c.raw"), AudioFormat::Raw);
    EXPECT_EQ(AudioFormatOf("C.WAV"), AudioFormat::Wav);
    EXPECT_EQ(AudioFormatOf("c.wav.flac"), AudioFormat::Flac);
    for (const char* path : {"", "wav", "a.wav/b", "a.mp3", ".wav", "a.wave"}) {
        EXPECT_EQ(AudioFormatOf(path), std::nullopt) << path;
    }
}

TEST(AudioFormats, AHeaderHoldsTheNearestWholeRateThatTheFormatKnows) {
    EXPECT_EQ(HeaderRate(AudioFormat::Wav, 11025.4), 11025);
    EXPECT_EQ(HeaderRate(AudioFormat::Wav, 2147483647.0), 2147483647);
    EXPECT_EQ(HeaderRate(AudioFormat::Flac, 655350.0), 655350);
    EXPECT_EQ(HeaderRate(AudioFormat::Raw, 1e300), 0);
    EXPECT_THROW(HeaderRate(AudioFormat::Wav, 0.4), BadInput);
    EXPECT_THROW(HeaderRate(AudioFormat::Wav, 2147483648.0), BadInput);
    EXPECT_THROW(HeaderRate(AudioFormat::Flac, 65537.0), BadInput);
    EXPECT_THROW(HeaderRate(AudioFormat::Flac, 1e6), BadInput);
}

}  // namespace
}  // namespace larynth
