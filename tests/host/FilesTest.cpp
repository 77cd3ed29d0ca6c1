// SPDX-License-Identifier: MIT
/// Files that come into being, and the audio formats in them.
#include <csignal>
#include <gmock/gmock.h>
#include <sndfile.h>
#include <sys/stat.h>

#include "host/Errors.h"
#include "host/Files.h"
#include "host/audio/Sound.h"
#include "tests/host/CommandFolder.h"

namespace larynth {
namespace {

using testing::ElementsAre;

class OutputFiles : public testing::Test {
  protected:
    test::CommandFolder folder_;
    const std::string target_ = folder_.Path("target");
};

TEST_F(OutputFiles, AppearWholeWhenCommittedAndLeaveNothingWhenAbandoned) {
    { OutputFile(target_).Write(std::string("new")); }
    EXPECT_THAT(folder_.Names(), ElementsAre());
    folder_.Write("target", "old");
    ASSERT_EQ(chmod(target_.c_str(), 0640), 0);
    std::filesystem::create_symlink("target", folder_.Path("link"));
    OutputFile file(folder_.Path("link"));
    file.Write(std::string("new "));
    file.Write(std::string("content"));
    EXPECT_EQ(folder_.Read("target"), "old");
    file.Commit();
    EXPECT_EQ(folder_.Read("target"), "new content");
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path("link")));
    EXPECT_EQ(std::filesystem::status(target_).permissions(), std::filesystem::perms{0640});
    EXPECT_THAT(folder_.Names(), ElementsAre("link", "target"));
}

TEST_F(OutputFiles, AreCommittedBeforeASignalThatComesMeanwhileEndsTheProgram) {
    const auto work = [this] {
        OutputFile file(target_);
        raise(SIGTERM);
        file.Write(std::string("new"));
        file.Commit();
    };
    EXPECT_EXIT(work(), testing::KilledBySignal(SIGTERM), "");
    EXPECT_EQ(folder_.Read("target"), "new");
    EXPECT_THAT(folder_.Names(), ElementsAre("target"));
}

TEST(AudioFormats, FilesReadBackAsTheSameSamples) {
    const std::vector<short> samples{0, 1, -1, 256, -257, 32767, -32768};
    const test::CommandFolder folder;
    for (const auto& [format, container] :
         {std::pair{AudioFormat::Wav, SF_FORMAT_WAV}, std::pair{AudioFormat::Flac, SF_FORMAT_FLAC}}) {
        const std::vector<char> bytes = EncodeAudio(format, 11025, samples);
        folder.Write("sound", {bytes.begin(), bytes.end()});
        SF_INFO info{};
        SNDFILE* const file = sf_open(folder.Path("sound").c_str(), SFM_READ, &info);
        ASSERT_NE(file, nullptr);
        EXPECT_EQ(info.format, container | SF_FORMAT_PCM_16);
        EXPECT_EQ(info.channels, 1);
        EXPECT_EQ(info.samplerate, 11025);
        std::vector<short> read(samples.size() + 1);
        read.resize(static_cast<std::size_t>(sf_read_short(file, read.data(), std::ssize(read))));
        EXPECT_EQ(read, samples);
        sf_close(file);
    }
    EXPECT_THAT(EncodeAudio(AudioFormat::Raw, 0, std::vector<short>{1, -2, 0x1234}),
                testing::ElementsAreArray({'\x01', '\x00', '\xFE', '\xFF', '\x34', '\x12'}));
}

TEST(AudioFormats, AHeaderHoldsTheNearestWholeRateThatTheFormatKnows) {
    EXPECT_EQ(HeaderRate(AudioFormat::Wav, 11025.4), 11025);
    EXPECT_EQ(HeaderRate(AudioFormat::Wav, 2147483647.0), 2147483647);
    EXPECT_EQ(HeaderRate(AudioFormat::Flac, 655350.0), 655350);
    EXPECT_EQ(HeaderRate(AudioFormat::Raw, 1e300), 0);
    EXPECT_THROW(HeaderRate(AudioFormat::Wav, 0.4), BadInput);
    EXPECT_THROW(HeaderRate(AudioFormat::Wav, 2147483648.0), BadInput);
    EXPECT_THROW(HeaderRate(AudioFormat::Flac, 65537.0), BadInput);
}

}  // namespace
}  // namespace larynth
