// SPDX-License-Identifier: MIT
#include <csignal>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "host/OutputFile.h"
#include "tests/host/CommandFolder.h"

namespace larynth {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OutputFiles : public testing::Test {
  protected:
    std::string Target() const { return folder_.Path("target").string(); }

    // Runs in a process of its own; the signal that ended it, or 0.
    static int SignalOf(const std::function<void()>& work) {
        const pid_t child = fork();
        if (child == 0) {
            work();
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

    test::CommandFolder folder_;
};

TEST_F(OutputFiles, AppearWholeWhenCommitted) {
    folder_.Write("target", "old");
    {
        OutputFile file(Target());
        file.Write(std::string("new "));
        file.Write(std::string("content"));
        EXPECT_EQ(folder_.Read("target"), "old");
        file.Commit();
        EXPECT_EQ(folder_.Read("target"), "new content");
    }
    EXPECT_THAT(folder_.Names(), ElementsAre("target"));
}

TEST_F(OutputFiles, LeaveNothingWhenAbandoned) {
    { OutputFile(Target()).Write(std::string("new")); }
    EXPECT_THAT(folder_.Names(), IsEmpty());
    folder_.Write("target", "old");
    { OutputFile(Target()).Write(std::string("new")); }
    EXPECT_EQ(folder_.Read("target"), "old");
    EXPECT_THAT(folder_.Names(), ElementsAre("target"));
}

TEST_F(OutputFiles, KeepTheModeAndTheLinkOfWhatTheyReplace) {
    folder_.Write("target", "old");
    ASSERT_EQ(chmod(Target().c_str(), 0640), 0);
    std::filesystem::create_symlink("target", folder_.Path("link"));
    OutputFile file(folder_.Path("link").string());
    file.Write(std::string("new"));
    file.Commit();
    EXPECT_EQ(folder_.Read("target"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path("link")));
    EXPECT_EQ(std::filesystem::status(Target()).permissions(), std::filesystem::perms{0640});
}

TEST_F(OutputFiles, GoStraightIntoAPipeAndADevice) {
    ASSERT_EQ(mkfifo(Target().c_str(), 0600), 0);
    const test::CommandResult reader = folder_.Run("cat target >copy & sleep 0");
    ASSERT_EQ(reader.status, 0);
    {
        OutputFile file(Target());
        file.Write(std::string("through"));
        file.Commit();
    }
    EXPECT_EQ(folder_.Run("while test ! -s copy; do sleep 0.01; done; cat copy").out, "through");
    EXPECT_TRUE(std::filesystem::is_fifo(Target()));
    OutputFile full("/dev/full");
    EXPECT_THROW(full.Write(std::string("x")), std::system_error);
}

TEST_F(OutputFiles, AreRefusedWhereNoFileCanBe) {
    EXPECT_THROW(OutputFile(folder_.Path("").string()), std::system_error);
    EXPECT_THROW(OutputFile(folder_.Path("none/target").string()), std::system_error);
    EXPECT_THAT(folder_.Names(), IsEmpty());
}

TEST_F(OutputFiles, SurviveSignalsThatComeWhileTheyAreWritten) {
    folder_.Write("target", "old");
    const auto interrupted = [this] {
        OutputFile file(Target());
        raise(SIGTERM);
        file.Write(std::string("new"));
        file.Commit();
    };
    EXPECT_EQ(SignalOf(interrupted), SIGTERM);
    EXPECT_EQ(folder_.Read("target"), "new");
    EXPECT_THAT(folder_.Names(), ElementsAre("target"));

    const auto killed = [this] {
        OutputFile file(Target());
        file.Write(std::string("half"));
        raise(SIGKILL);
    };
    EXPECT_EQ(SignalOf(killed), SIGKILL);
    EXPECT_EQ(folder_.Read("target"), "new");
}

}  // namespace
}  // namespace larynth
