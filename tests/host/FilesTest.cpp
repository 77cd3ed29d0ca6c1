// SPDX-License-Identifier: MIT
/// Files that come into being, and the audio formats in them.
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sndfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "host/Files.h"
#include "host/audio/Sound.h"
#include "input/BadInput.h"
#include "tests/host/CommandFolder.h"

// As on a file system that has no unnamed files.
static bool refusesUnnamedFiles = false;

extern "C" int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    if (refusesUnnamedFiles && (flags & O_TMPFILE) == O_TMPFILE) return errno = EOPNOTSUPP, -1;
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

namespace larynth {
namespace {

using testing::ElementsAre;

class OutputFiles : public testing::Test {
  protected:
    ~OutputFiles() override { refusesUnnamedFiles = false; }

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

TEST_F(OutputFiles, ASignalThatComesMeanwhileLeavesNothing) {
    const auto work = [this] {
        OutputFile file(target_);
        file.Write(std::string("new"));
        raise(SIGTERM);
        file.Commit();
    };
    for (const bool refuses : {false, true}) {
        refusesUnnamedFiles = refuses;
        EXPECT_EXIT(work(), testing::KilledBySignal(SIGTERM), "") << refuses;
        EXPECT_THAT(folder_.Names(), ElementsAre()) << refuses;
    }
}

TEST_F(OutputFiles, AreCommittedTogetherOrNotAtAll) {
    for (const bool refuses : {false, true}) {
        refusesUnnamedFiles = refuses;
        for (const std::string blocked : {"new", "third", ""}) {  // by a folder that came meanwhile
            folder_.Write("target", "old");
            OutputFile first(target_), second(folder_.Path("new")), third(folder_.Path("third"));
            first.Write(std::string("new"));
            if (!blocked.empty()) std::filesystem::create_directory(folder_.Path(blocked));
            const auto commit = [&] { OutputFile::Commit({&first, &second, &third}); };
            if (!blocked.empty()) {
                EXPECT_THROW(commit(), std::system_error);
            } else {
                commit();
            }
            EXPECT_EQ(folder_.Read("target"), blocked.empty() ? "new" : "old") << refuses;
            for (const std::string name : {"new", "third"}) {
                EXPECT_EQ(std::filesystem::is_directory(folder_.Path(name)), name == blocked) << refuses;
                EXPECT_EQ(std::filesystem::remove(folder_.Path(name)), blocked.empty() || name == blocked);
            }
        }
        EXPECT_THAT(folder_.Names(), ElementsAre("target"));
    }
}

void Encode(const std::string& path, AudioFormat format, const std::vector<short>& samples) {
    OutputFile output(path, AudioFile::AccessFor(format));
    AudioFile audio(output, format, 11025, samples.size());
    for (const short sample : samples) audio.Append(std::span(&sample, 1));
    audio.Finish();
    output.Commit();
}

TEST(AudioFormats, FilesReadBackAsTheSameSamples) {
    const std::vector<short> samples{0, 1, -1, 256, -257, 32767, -32768};
    const test::CommandFolder folder;
    for (const auto& [format, container] :
         {std::pair{AudioFormat::Wav, SF_FORMAT_WAV}, std::pair{AudioFormat::Flac, SF_FORMAT_FLAC}}) {
        Encode(folder.Path("sound"), format, samples);
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
    Encode(folder.Path("sound"), AudioFormat::Raw, {1, -2, 0x1234});
    EXPECT_EQ(folder.Read("sound"), std::string("\x01\x00\xFE\xFF\x34\x12", 6));
}

TEST(AudioFormats, AHeaderHoldsTheNearestWholeRateThatTheFormatKnows) {
    EXPECT_EQ(HeaderRate(AudioFormat::Wav, 11025.4), 11025);
    EXPECT_EQ(HeaderRate(AudioFormat::Wav, 2147483647.0), 2147483647);
    EXPECT_THROW(HeaderRate(AudioFormat::Wav, 0.4), BadInput);
    EXPECT_THROW(HeaderRate(AudioFormat::Wav, 2147483648.0), BadInput);
    EXPECT_THROW(HeaderRate(AudioFormat::Flac, 65537.0), BadInput);
}

}  // namespace
}  // namespace larynth
