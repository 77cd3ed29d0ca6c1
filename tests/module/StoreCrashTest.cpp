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

struct RegisteredClass {
    std::string id;
    std::string progId;
};

/// The classes that the registry names, each with a server.
std::vector<RegisteredClass> ClassesIn(ILarynthRegistry& registry) {
    const std::string classes = "HKEY_CLASSES_ROOT\\CLSID";
    std::vector<RegisteredClass> found;
    LPCSTR text = nullptr;
    while (SUCCEEDED(registry.GetSubkey(classes.c_str(), static_cast<int>(found.size()), &text))) {
        RegisteredClass row{text, {}};
        const std::string key = classes + "\\" + row.id + "\\VersionIndependentProgID";
        EXPECT_EQ(Code(registry.GetValue(key.c_str(), "", &text)), "S_OK") << row.id;
        row.progId = text;
        found.push_back(row);
    }
    return found;
}

std::string KeysOf(ILarynthRegistry& registry, const RegisteredClass& row) {
    const std::string root = "HKEY_CLASSES_ROOT\\";
    return TestStore::Listing(registry, root + row.progId) +
           TestStore::Listing(registry, root + row.progId + ".1") +
           TestStore::Listing(registry, root + "CLSID\\" + row.id);
}

/// What SQLite finds wrong; "ok" when nothing is. Also undoes what a killed writer left.
std::string FaultsOf(const std::filesystem::path& file) {
    sqlite3* database = nullptr;
    std::string faults = "cannot be opened";
    if (sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK) {
        faults = "cannot be checked";
        sqlite3_stmt* check = nullptr;
        sqlite3_prepare_v2(database, "PRAGMA integrity_check", -1, &check, nullptr);
        if (sqlite3_step(check) == SQLITE_ROW) {
            faults = reinterpret_cast<const char*>(sqlite3_column_text(check, 0));
        }
        sqlite3_finalize(check);
    }
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

class StoreCrashTest : public testing::Test {
  protected:
    TestStore store_;
};

}  // namespace

TEST_F(StoreCrashTest, ProcessesThatRegisterAtOnceAllSucceed) {
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
    EXPECT_EQ(ClassesIn(*TestStore::Open().Get()).size(), 16U);
    EXPECT_EQ(std::system(LARYNTH_CREATE_FROM_STORE), 0);
}

TEST_F(StoreCrashTest, AProcessThatIsKilledLeavesEachClassWhollyThereOrNotAtAll) {
    constexpr int kKills = 200;
    std::mt19937 random(1);
    std::uniform_int_distribution<int> microseconds(0, 40'000);
    int cutShort = 0;  // transactions that were going on
    int partly = 0;    // some classes there, others not
    ComPtr<ILarynthRegistry> described;
    ASSERT_EQ(Code(LarynthDescribeModule(LARYNTH_MODULE, described.Put())), "S_OK") << LarynthLastError();
    const std::vector<RegisteredClass> classes = ClassesIn(*described.Get());
    ASSERT_EQ(classes.size(), 12U);
    const auto journal = store_.File().string() + "-journal";
    for (int kill = 0; kill < kKills; ++kill) {
        const pid_t child = InOwnProcess([] {
            for (;;) {
                if (LarynthRegisterModule(LARYNTH_MODULE) != S_OK) return 1;
                if (LarynthUnregisterModule(LARYNTH_MODULE) != S_OK) return 2;
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        ::kill(child, SIGKILL);
        ASSERT_EQ(StatusOf(child), 128 + SIGKILL);
        if (!std::filesystem::exists(store_.File())) continue;
        cutShort += std::filesystem::exists(journal) ? 1 : 0;

        const auto registry = TestStore::Open();
        std::size_t present = 0;
        for (const RegisteredClass& row : classes) {
            const std::string keys = KeysOf(*registry.Get(), row);
            ASSERT_TRUE(keys.empty() || keys == KeysOf(*described.Get(), row)) << "kill " << kill << ":\n"
                                                                               << keys;
            if (!keys.empty()) ++present;
        }
        partly += present != 0 && present != classes.size() ? 1 : 0;
        ASSERT_EQ(FaultsOf(store_.File()), "ok") << kill;
    }
    EXPECT_GT(cutShort, 10) << "or else nothing was tested";
    EXPECT_GT(partly, 10);
    RecordProperty("cutShort", cutShort);

    ASSERT_EQ(Code(LarynthRegisterModule(LARYNTH_MODULE)), "S_OK") << LarynthLastError();
    ASSERT_EQ(Code(LarynthRegisterModule(LARYNTH_COMPANION_MODULE)), "S_OK") << LarynthLastError();
    EXPECT_EQ(std::system(LARYNTH_CREATE_FROM_STORE), 0);
}
