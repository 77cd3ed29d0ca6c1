// SPDX-License-Identifier: MIT
// The registration store under several processes and under processes that are killed.
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <random>
#include <sqlite3.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <larynth/Larynth.h>

#include "tests/support/Code.h"
#include "tests/support/TestStore.h"

namespace {

using Clock = std::chrono::steady_clock;

std::string ValueOf(ILarynthRegistry& registry, const std::string& key) {
    LPCSTR text = "";
    registry.GetValue(key.c_str(), "", &text);
    return text;
}

/// The keys of each class that the registry names, by the class's place among all.
std::vector<std::string> ClassesIn(ILarynthRegistry& registry, ILarynthRegistry& named) {
    const std::string root = "HKEY_CLASSES_ROOT\\", classes = root + "CLSID";
    std::vector<std::string> found;
    LPCSTR id = nullptr;
    while (SUCCEEDED(named.GetSubkey(classes.c_str(), static_cast<int>(found.size()), &id))) {
        const std::string key = classes + "\\" + id;
        const std::string prog = root + ValueOf(named, key + "\\VersionIndependentProgID");
        found.push_back(TestStore::Listing(registry, prog) + TestStore::Listing(registry, prog + ".1") +
                        TestStore::Listing(registry, key));
    }
    return found;
}

/// What SQLite finds wrong; "ok" when nothing is. Also undoes what a killed writer left.
std::string FaultsOf(const std::filesystem::path& file) {
    sqlite3* database = nullptr;
    sqlite3_stmt* check = nullptr;
    std::string faults = "cannot be checked";
    sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_prepare_v2(database, "PRAGMA integrity_check", -1, &check, nullptr);
    if (sqlite3_step(check) == SQLITE_ROW) {
        faults = reinterpret_cast<const char*>(sqlite3_column_text(check, 0));
    }
    sqlite3_finalize(check);
    sqlite3_close(database);
    return faults;
}

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

class StoreCrash : public testing::Test {
  protected:
    TestStore store_;
};

}  // namespace

TEST_F(StoreCrash, ProcessesThatRegisterAtOnceAllSucceed) {
    std::vector<pid_t> children;
    for (int process = 0; process < 3; ++process) {
        children.push_back(InOwnProcess([process] {
            for (int round = 0; round < 3; ++round) {
                // The last word of each is to register.
                if (process % 2 == 1 && LarynthUnregisterModule(LARYNTH_MODULE) != S_OK) return 1;
                if (LarynthRegisterModule(LARYNTH_MODULE) != S_OK) return 2;
                if (LarynthRegisterModule(LARYNTH_COMPANION_MODULE) != S_OK) return 3;
            }
            return 0;
        }));
    }
    for (const pid_t child : children) EXPECT_EQ(StatusOf(child), 0);
    EXPECT_EQ(FaultsOf(store_.File()), "ok");
    EXPECT_EQ(std::system(LARYNTH_CREATE_FROM_STORE), 0);
}

TEST_F(StoreCrash, AProcessThatIsKilledLeavesEachClassWhollyThereOrNotAtAll) {
    constexpr int kKills = 60;
    ComPtr<ILarynthRegistry> described;
    ASSERT_EQ(Code(LarynthDescribeModule(LARYNTH_MODULE, described.Put())), "S_OK") << LarynthLastError();
    const std::vector<std::string> whole = ClassesIn(*described.Get(), *described.Get());
    ASSERT_EQ(whole.size(), 12U);
    const auto process = [] {
        for (;;) {
            if (LarynthRegisterModule(LARYNTH_MODULE) != S_OK) return 1;
            if (LarynthUnregisterModule(LARYNTH_MODULE) != S_OK) return 2;
        }
    };
    // How long a process takes for both, in a store that is there, on this disk and under this load.
    ASSERT_EQ(Code(LarynthRegisterModule(LARYNTH_MODULE)), "S_OK");
    const auto start = Clock::now();
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK");
    ASSERT_EQ(Code(LarynthRegisterModule(LARYNTH_MODULE)), "S_OK");
    std::uniform_int_distribution<Clock::rep> moment(0, (Clock::now() - start).count());
    std::mt19937 random(1);
    int cutShort = 0;  // transactions that were going on
    int partly = 0;    // some classes there, others not
    for (int kill = 0; kill < kKills; ++kill) {
        const pid_t child = InOwnProcess(process);
        std::this_thread::sleep_for(Clock::duration(moment(random)));
        ::kill(child, SIGKILL);
        ASSERT_EQ(StatusOf(child), 128 + SIGKILL);
        cutShort += std::filesystem::exists(store_.File().string() + "-journal") ? 1 : 0;
        const auto found = ClassesIn(*TestStore::Open().Get(), *described.Get());
        std::size_t present = 0;
        for (std::size_t i = 0; i < whole.size(); ++i) {
            ASSERT_TRUE(found[i].empty() || found[i] == whole[i]) << "kill " << kill << ":\n" << found[i];
            present += found[i].empty() ? 0U : 1U;
        }
        partly += present != 0 && present != whole.size() ? 1 : 0;
        ASSERT_EQ(FaultsOf(store_.File()), "ok") << kill;
    }
    EXPECT_GT(cutShort, kKills / 10) << "or else nothing was tested";
    EXPECT_GT(partly, kKills / 10);
    ASSERT_EQ(Code(LarynthRegisterModule(LARYNTH_MODULE)), "S_OK") << LarynthLastError();
    ASSERT_EQ(Code(LarynthRegisterModule(LARYNTH_COMPANION_MODULE)), "S_OK") << LarynthLastError();
    EXPECT_EQ(std::system(LARYNTH_CREATE_FROM_STORE), 0);
}
