// SPDX-License-Identifier: MIT
// The generic half of a module around a class table of the test's own: what no finished module shows.
#include <gtest/gtest.h>
#include <latch>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

#include <larynth/Larynth.h>

#include "com/ComObject.h"
#include "com/Create.h"
#include "module/ClassTable.h"
#include "module/EntryPoints.h"
#include "runtime/ModuleNotification.h"
#include "tests/support/Allocations.h"
#include "tests/support/Code.h"

namespace larynth {

namespace {

class Plain final : public ComObject<ITTSVocalTractF> {
  public:
    using ComObject::ComObject;
};

/// Fails in the middle of its construction.
class Unfinished final : public ComObject<ITTSVocalTractF> {
  public:
    explicit Unfinished(IUnknown* outer) : ComObject(outer) { throw std::runtime_error("not today"); }
};

constexpr CLSID kPlain{1, 0, 0, {}};
constexpr CLSID kUnfinished{2, 0, 0, {}};
constexpr CLSID kShadowed = kPlain;

constinit ClassEntry classTable[] = {
    // no scripts: nothing is registered here
    {kPlain, 0, CreateInstance<Plain>},
    {kUnfinished, 0, CreateInstance<Unfinished>},
    {kShadowed, 0, CreateInstance<Unfinished>},
};

ComPtr<IClassFactory> FactoryOf(REFCLSID id) {
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(Code(DllGetClassObject(id, IID_IClassFactory, factory.PutVoid())), Code(S_OK));
    return factory;
}

TEST(ModuleKit, LooksClassesUpInTheOrderOfTheTable) {
    ComPtr<IUnknown> object;
    EXPECT_EQ(Code(FactoryOf(kShadowed)->CreateInstance(nullptr, IID_IUnknown, object.PutVoid())),
              Code(S_OK));
}

TEST(ModuleKit, ReportsAFactoryThatHasNoMemoryAndMakesItLater) {
    ModuleUnloading();
    void* factory = classTable;
    HRESULT hr = S_OK;
    {
        const AllocationFailure failure(1);
        hr = DllGetClassObject(kPlain, IID_IClassFactory, &factory);
    }
    EXPECT_EQ(Code(hr), Code(E_OUTOFMEMORY));
    EXPECT_EQ(factory, nullptr);
    EXPECT_EQ(Code(DllCanUnloadNow()), Code(S_OK));
    FactoryOf(kPlain);
}

TEST(ModuleKit, TurnsAFailedConstructionIntoACodeAndHoldsNothing) {
    void* object = classTable;
    EXPECT_EQ(Code(FactoryOf(kUnfinished)->CreateInstance(nullptr, IID_IUnknown, &object)), Code(E_FAIL));
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(Code(DllCanUnloadNow()), Code(S_OK));
}

TEST(ModuleKit, GivesThreadsThatAskAtOnceTheSameFactory) {
    ModuleUnloading();  // no factory is cached
    constexpr int kThreads = 4;
    std::latch start(kThreads);
    ComPtr<IClassFactory> got[kThreads];
    std::vector<std::thread> threads;
    for (auto& factory : got) {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            const SlowAllocations meanwhileTheOthersAsk;
            factory = FactoryOf(kPlain);
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const auto& factory : got) EXPECT_EQ(factory.Get(), got[0].Get());
}

TEST(ModuleKit, CountsTheReferencesOfManyThreads) {
    constexpr int kThreads = 4;
    auto factory = FactoryOf(kPlain);
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            for (int round = 0; round < 50'000; ++round) {
                factory->AddRef();
                factory->Release();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(factory.Detach()->Release(), 1U);
    EXPECT_EQ(Code(DllCanUnloadNow()), Code(S_OK));
}

TEST(ModuleKit, ReleasesAndForgetsItsFactoriesAtUnload) {
    auto before = FactoryOf(kPlain);
    ComPtr<IUnknown> survivor;
    ASSERT_EQ(Code(before->CreateInstance(nullptr, IID_IUnknown, survivor.PutVoid())), Code(S_OK));
    ModuleUnloading();
    EXPECT_NE(FactoryOf(kPlain).Get(), before.Get());
    EXPECT_EQ(before.Detach()->Release(), 0U) << "the table's reference was given back";
    EXPECT_EQ(Code(DllCanUnloadNow()), Code(S_FALSE)) << "an object that is alive is not touched";
    EXPECT_EQ(survivor.Detach()->Release(), 0U);
    EXPECT_EQ(Code(DllCanUnloadNow()), Code(S_OK));
    ModuleUnloading();
    ModuleUnloading();  // nothing left to release
}

}  // namespace

std::span<ClassEntry> ClassTable() noexcept { return classTable; }

bool HasTypeLibrary() noexcept { return false; }

}  // namespace larynth
