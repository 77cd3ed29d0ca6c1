// SPDX-License-Identifier: MIT
// The modules as built, in a registration store of the test's own: by one process, by several at once, and by
// processes that are killed.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <larynth/Larynth.h>

#include "tests/support/Allocations.h"
#include "tests/support/Code.h"
#include "tests/support/Content.h"
#include "tests/support/TestStore.h"

namespace {

using Clock = std::chrono::steady_clock;

/// The keys for classes and type libraries in a registry, without the folder of the modules; LARYNTH_KEYS is
/// the record of those that were released.
std::string KeysOf(ILarynthRegistry& registry) {
    static const std::string folder = std::filesystem::path(LARYNTH_MODULE).parent_path().string();
    std::string text = TestStore::Listing(registry, "HKEY_CLASSES_ROOT");
    std::size_t at = 0;
    while ((at = text.find(folder)) != text.npos) text.replace(at, folder.size(), "FOLDER");
    return text;
}
std::string Keys() { return KeysOf(*TestStore::Open().Get()); }

class Registration : public testing::Test {
  protected:
    static void Register(const char* module) {
        ASSERT_EQ(Code(LarynthRegisterModule(module)), "S_OK") << LarynthLastError();
    }
    TestStore store_;
};

/// Runs `work` in a process of its own, which ends with its result.
template <class Work>
pid_t InOwnProcess(Work work) {
    const pid_t child = fork();
    if (child == 0) _exit(work());
    return child;
}

int StatusOf(pid_t child) {
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

using StoreCrash = Registration;

}  // namespace

TEST_F(Registration, WritesWhatWasReleasedForAnyProcessAndTakesItOutAgain) {
    ComPtr<ILarynthRegistry> described;
    ASSERT_EQ(Code(LarynthDescribeModule(LARYNTH_MODULE, described.Put())), "S_OK") << LarynthLastError();
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK") << "nothing was registered";
    EXPECT_TRUE(std::filesystem::is_empty(store_.Folder())) << "neither stores anything";
    EXPECT_NE(std::system(LARYNTH_CREATE_FROM_STORE), 0);
    Register(LARYNTH_MODULE);
    EXPECT_EQ(Keys(), KeysOf(*described.Get()));
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK") << LarynthLastError();
    const std::string none = Keys();
    EXPECT_EQ(none.find(" Class"), std::string::npos) << none;
    Register(LARYNTH_COMPANION_MODULE);
    const std::string companions = Keys();
    Register(LARYNTH_MODULE);
    EXPECT_EQ(std::system(LARYNTH_CREATE_FROM_STORE), 0) << "by a class identifier alone";
    std::ofstream(LARYNTH_TEST_DIR "/keys.txt") << Keys();
    EXPECT_EQ(Keys(), ContentOf(LARYNTH_KEYS)) << "what there is now stands in " LARYNTH_TEST_DIR;
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK");
    EXPECT_EQ(Keys(), companions);
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_COMPANION_MODULE)), "S_OK");
    EXPECT_EQ(Keys(), none);
}

TEST_F(Registration, LeavesTheStoreAsItWasWhateverAllocationFails) {
    Register(LARYNTH_COMPANION_MODULE);
    const auto written = last_write_time(store_.File());
    bool failed = true;
    for (int ordinal = 1; failed; ++ordinal) {
        HRESULT hr = E_FAIL;
        {
            const AllocationFailure failure(ordinal);
            hr = LarynthRegisterModule(LARYNTH_MODULE);
            failed = failure.Happened();
        }
        EXPECT_TRUE(failed ? hr == E_OUTOFMEMORY || hr == E_FAIL || hr == DISP_E_EXCEPTION : hr == S_OK)
            << ordinal << ": " << Code(hr);
        EXPECT_EQ(last_write_time(store_.File()) == written, failed) << ordinal;
    }
    EXPECT_EQ(Keys(), ContentOf(LARYNTH_KEYS));
}

TEST_F(Registration, TheCallerOfAPrivilegedProgramDoesNotChooseItsStore) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can make a program that runs as another user";
    Register(LARYNTH_MODULE);
    Register(LARYNTH_COMPANION_MODULE);
    const std::filesystem::path program = store_.Folder() / "program";
    copy_file(LARYNTH_CREATE_FROM_STORE, program);
    chmod(store_.Folder().c_str(), 0755), chmod(store_.File().c_str(), 0644);
    ASSERT_EQ(chown(program.c_str(), 65534, 65534), 0);
    for (const mode_t mode : {0755U, 04755U}) {
        ASSERT_EQ(chmod(program.c_str(), mode), 0);
        EXPECT_EQ(StatusOf(InOwnProcess([&] { return execl(program.c_str(), "program", nullptr); })),
                  mode == 0755U ? 0 : 1);
    }
}

TEST_F(StoreCrash, ProcessesThatRegisterAtOnceAllSucceed) {
    std::vector<pid_t> children;
    for (int process = 0; process < 3; ++process) {
        children.push_back(InOwnProcess([process] {
            for (int round = 0; round < 3; ++round) {
                // The last word of each is to register.
                if (process % 2 == 1 && LarynthUnregisterModule(LARYNTH_MODULE) != S_OK) return 1;
                if (LarynthRegisterModule(LARYNTH_MODULE) != S_OK) return 2;
            }
            return LarynthRegisterModule(LARYNTH_COMPANION_MODULE) == S_OK ? 0 : 3;
        }));
    }
    for (const pid_t child : children) EXPECT_EQ(StatusOf(child), 0);
    EXPECT_EQ(Keys(), ContentOf(LARYNTH_KEYS));
}

TEST_F(StoreCrash, AProcessThatIsKilledLeavesAModuleWhollyThereOrNotAtAll) {
    constexpr int kKills = 60, kMostKills = 600;
    constexpr int kEnough = kKills / 10;  // of kills that hit something
    const auto process = [] {
        for (;;) {
            if (LarynthRegisterModule(LARYNTH_MODULE) != S_OK) return 1;
            if (LarynthUnregisterModule(LARYNTH_MODULE) != S_OK) return 2;
        }
    };
    // How long a process takes for both, in a store that is there, on this disk and under this load.
    Register(LARYNTH_MODULE);
    const std::string registered = Keys();
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK");
    const std::string unregistered = Keys();
    const auto start = Clock::now();
    Register(LARYNTH_MODULE);
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK");
    std::uniform_int_distribution<Clock::rep> moment(0, 2 * (Clock::now() - start).count());
    std::mt19937 random(1);
    int cutShort = 0;  // transactions that were going on
    for (int kill = 0; kill < kKills || (cutShort < kEnough && kill < kMostKills); ++kill) {
        const pid_t child = InOwnProcess(process);
        std::this_thread::sleep_for(Clock::duration(moment(random)));
        ::kill(child, SIGKILL);
        ASSERT_EQ(StatusOf(child), 128 + SIGKILL);
        cutShort += std::filesystem::exists(store_.File().string() + "-journal") ? 1 : 0;
        const std::string found = Keys();
        ASSERT_TRUE(found == registered || found == unregistered) << kill << found;
    }
    EXPECT_GE(cutShort, kEnough) << "too little was tested";
}
