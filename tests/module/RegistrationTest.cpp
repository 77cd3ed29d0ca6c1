// SPDX-License-Identifier: MIT
// The modules as built, in a registration store of the test's own: by one process, by several at once, and by
// processes that are killed.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <larynth/Larynth.h>

#include "tests/support/Allocations.h"
#include "tests/support/Code.h"
#include "tests/support/TestStore.h"

namespace {

using Clock = std::chrono::steady_clock;

struct ScriptRow {
    std::string name;  // of ProgID and description
    std::string classId;
};
using Scripts = std::vector<ScriptRow>;

const Scripts kLarynth{
    {"LarynthParams", "{D3DCF978-3C92-4D18-AAC8-578D8BA84BC0}"},
    {"TTSResonatorParams", "{895434B4-355D-4C65-84B0-15537408A2B5}"},
    {"TTSAntiResonatorParams", "{3E44BC05-FA21-4D55-947E-7E073EA5FDCB}"},
    {"Larynth", "{7856881E-0461-4F9D-8693-3030B63798FA}"},
    {"TTSVoicingSource", "{6D49C9D8-A620-4E8E-ACBA-2B799E3B3748}"},
    {"TTSParallelTract", "{D688AF4E-11A5-499C-A8B7-D9BBF9837120}"},
    {"TTSVocalTractR", "{E88EDD50-5042-4947-984D-BD487B982FF1}"},
    {"TTSAspirationSource", "{3AD8132F-0E23-47C3-A546-4623B5847C5C}"},
    {"TTSFricationSource", "{EDC28211-6850-460B-AD84-F22BE1B2A2AC}"},
    {"TTSVocalTractF", "{907437DE-FBC7-4DB7-A7FD-B4FCD0A8AEF4}"},
    {"TTSVoicingSourceFilter", "{2A4ABF0B-C32D-41C6-B8FC-1B9F9C323459}"},
    {"TTSVoicingSourceWave", "{DC19C734-AEDE-4AAA-96AA-305BA40F8266}"},
};
const Scripts kCompanion{
    {"TTSObjectList", "{B26F7395-06DF-41FE-8741-60B8A8B79AB6}"},
    {"TTSSoundData", "{F8095D20-FB5F-46E1-8D3A-9C8A4C60B310}"},
    {"TTSStreamHolder", "{185FD75B-6A28-4832-B30A-0DD60D635B86}"},
    {"TTSVoice", "{D8FF2D9B-C7A3-43F5-B32C-97770F4571A3}"},
};

std::string Classes(const std::string& below) { return "HKEY_CLASSES_ROOT\\" + below; }

/// The keys of a class in a registry, as TestStore::Listing shows them.
std::string KeysIn(ILarynthRegistry& registry, const ScriptRow& row) {
    const std::string prog = Classes("Larynth." + row.name);
    return TestStore::Listing(registry, prog) + TestStore::Listing(registry, prog + ".1") +
           TestStore::Listing(registry, Classes("CLSID\\" + row.classId));
}

/// What they are when the class is registered.
std::string KeysOf(const ScriptRow& row, const std::string& module) {
    const std::string prog = "Larynth." + row.name, text = " = " + row.name + " Class\n";
    const std::string key = Classes("CLSID\\" + row.classId), id = "\\CLSID = " + row.classId + "\n";
    return Classes(prog) + text + Classes(prog) + id + Classes(prog) + ".1" + text + Classes(prog) + ".1" +
           id + key + text + key + "\\InprocServer32 = " + module + " + 1\n" + key + "\\ProgID = " + prog +
           ".1\n" + key + "\\VersionIndependentProgID = " + prog + "\n";
}

void ExpectRegistered(ILarynthRegistry& registry, const Scripts& scripts, const std::string& module) {
    for (const ScriptRow& row : scripts) {
        EXPECT_EQ(KeysIn(registry, row), !module.empty() ? KeysOf(row, module) : "");
    }
}

constexpr int kKeysOfAClass = 8;
constexpr int kKeysBeside = 9;  // the root, the list of classes, the type library's; they stay

/// How many keys there are for classes and type libraries.
std::ptrdiff_t CountKeys() {
    return std::ranges::count(TestStore::Listing(*TestStore::Open().Get(), "HKEY_CLASSES_ROOT"), '\n');
}

class Registration : public testing::Test {
  protected:
    static void Register(const char* module) {
        ASSERT_EQ(Code(LarynthRegisterModule(module)), "S_OK") << LarynthLastError();
    }
    TestStore store_;
};

}  // namespace

TEST_F(Registration, WritesTheClassesOfTheTableForAnyProcessAndTakesThemOutAgain) {
    ComPtr<ILarynthRegistry> described;
    ASSERT_EQ(Code(LarynthDescribeModule(LARYNTH_MODULE, described.Put())), "S_OK") << LarynthLastError();
    ExpectRegistered(*described.Get(), kLarynth, LARYNTH_MODULE);
    EXPECT_TRUE(std::filesystem::is_empty(store_.Folder())) << "describing stores nothing";
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK") << "nothing was registered";
    EXPECT_TRUE(std::filesystem::is_empty(store_.Folder()));
    EXPECT_NE(std::system(LARYNTH_CREATE_FROM_STORE), 0);
    Register(LARYNTH_MODULE);
    Register(LARYNTH_COMPANION_MODULE);
    EXPECT_EQ(std::system(LARYNTH_CREATE_FROM_STORE), 0) << "by a class identifier alone";
    const auto registry = TestStore::Open();
    ExpectRegistered(*registry.Get(), kLarynth, LARYNTH_MODULE);
    ExpectRegistered(*registry.Get(), kCompanion, LARYNTH_COMPANION_MODULE);
    EXPECT_EQ(CountKeys(), 16 * kKeysOfAClass + kKeysBeside);

    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK") << LarynthLastError();
    ExpectRegistered(*registry.Get(), kLarynth, "");
    ExpectRegistered(*registry.Get(), kCompanion, LARYNTH_COMPANION_MODULE);
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_COMPANION_MODULE)), "S_OK");
    EXPECT_EQ(CountKeys(), kKeysBeside);
}

namespace {

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

TEST_F(Registration, AFullDiskLeavesAllOfAModuleOrNothing) {
    Register(LARYNTH_COMPANION_MODULE);
    const auto before = CountKeys();
    int failed = 0;
    for (rlim_t size = 4096; CountKeys() == before; size += 4096, ++failed) {
        StatusOf(InOwnProcess([size] {
            const rlimit most{size, size};
            std::signal(SIGXFSZ, SIG_IGN);
            setrlimit(RLIMIT_FSIZE, &most);
            return LarynthRegisterModule(LARYNTH_MODULE) == S_OK ? 0 : 1;
        }));
    }
    EXPECT_GT(failed, 3) << "too little was tested";
    ExpectRegistered(*TestStore::Open().Get(), kLarynth, LARYNTH_MODULE);
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
    EXPECT_EQ(CountKeys(), 16 * kKeysOfAClass + kKeysBeside);
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
                if (LarynthRegisterModule(LARYNTH_COMPANION_MODULE) != S_OK) return 3;
            }
            return 0;
        }));
    }
    for (const pid_t child : children) EXPECT_EQ(StatusOf(child), 0);
    EXPECT_EQ(CountKeys(), 16 * kKeysOfAClass + kKeysBeside);
    EXPECT_EQ(std::system(LARYNTH_CREATE_FROM_STORE), 0);
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
    const auto start = Clock::now();
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK");
    Register(LARYNTH_MODULE);
    std::uniform_int_distribution<Clock::rep> moment(0, 2 * (Clock::now() - start).count());
    std::mt19937 random(1);
    int cutShort = 0;  // transactions that were going on
    for (int kill = 0; kill < kKills || (cutShort < kEnough && kill < kMostKills); ++kill) {
        const pid_t child = InOwnProcess(process);
        std::this_thread::sleep_for(Clock::duration(moment(random)));
        ::kill(child, SIGKILL);
        ASSERT_EQ(StatusOf(child), 128 + SIGKILL);
        cutShort += std::filesystem::exists(store_.File().string() + "-journal") ? 1 : 0;
        const auto registry = TestStore::Open();
        const bool there = !KeysIn(*registry.Get(), kLarynth.front()).empty();
        ExpectRegistered(*registry.Get(), kLarynth, there ? LARYNTH_MODULE : "");
        ASSERT_EQ(CountKeys(), (there ? 12 * kKeysOfAClass : 0) + kKeysBeside) << kill;
    }
    EXPECT_GE(cutShort, kEnough) << "too little was tested";
    Register(LARYNTH_MODULE);
    Register(LARYNTH_COMPANION_MODULE);
    EXPECT_EQ(std::system(LARYNTH_CREATE_FROM_STORE), 0);
}
