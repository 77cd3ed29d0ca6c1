// SPDX-License-Identifier: MIT
// The entry points, class factories and lock count of both modules as built.
#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "tests/module/ModuleUnderTest.h"
#include "tests/support/Code.h"

namespace {

enum class Offer { Larynth, Companion, Nobody };

const struct {
    const char* Name;
    CLSID Id;
    Offer By;
} kClasses[] = {
    {"Larynth", CLSID_Larynth, Offer::Larynth},
    {"LarynthParams", CLSID_LarynthParams, Offer::Larynth},
    {"TTSResonatorParams", CLSID_TTSResonatorParams, Offer::Larynth},
    {"TTSAntiResonatorParams", CLSID_TTSAntiResonatorParams, Offer::Larynth},
    {"TTSVoicingSourceStd", CLSID_TTSVoicingSourceStd, Offer::Larynth},
    {"TTSVoicingSourceFilter", CLSID_TTSVoicingSourceFilter, Offer::Larynth},
    {"TTSVoicingSourceWave", CLSID_TTSVoicingSourceWave, Offer::Larynth},
    {"TTSVocalTractR", CLSID_TTSVocalTractR, Offer::Larynth},
    {"TTSVocalTractF", CLSID_TTSVocalTractF, Offer::Larynth},
    {"TTSParallelTract", CLSID_TTSParallelTract, Offer::Larynth},
    {"TTSAspirationSource", CLSID_TTSAspirationSource, Offer::Larynth},
    {"TTSFricationSource", CLSID_TTSFricationSource, Offer::Larynth},
    {"TTSObjectList", CLSID_TTSObjectList, Offer::Companion},
    {"TTSSoundData", CLSID_TTSSoundData, Offer::Companion},
    {"TTSStreamHolder", CLSID_TTSStreamHolder, Offer::Companion},
    {"TTSVoice", CLSID_TTSVoice, Offer::Companion},
    {"TTSVoicingSourceRBF", CLSID_TTSVoicingSourceRBF, Offer::Nobody},
    {"an interface's identifier", IID_ILarynthParams, Offer::Nobody},
    {"the null identifier", GUID_NULL, Offer::Nobody},
};

struct ModuleRow {
    const char* Name;
    const char* Path;
    Offer Own;
    CLSID Class;  // one of its own
};

class ClassObject : public testing::TestWithParam<ModuleRow> {
  protected:
    ComPtr<IClassFactory> Factory() const {
        ComPtr<IClassFactory> factory;
        EXPECT_EQ(Code(Module.GetClassObject(GetParam().Class, IID_IClassFactory, factory.PutVoid())),
                  Code(S_OK));
        return factory;
    }

    ModuleUnderTest Module{GetParam().Path};
};

TEST_P(ClassObject, ExistsForTheModulesOwnClassesOnly) {
    for (const auto& [name, id, by] : kClasses) {
        const bool own = by == GetParam().Own;
        void* factory = this;
        EXPECT_EQ(Code(Module.GetClassObject(id, IID_IUnknown, &factory)),
                  Code(own ? S_OK : CLASS_E_CLASSNOTAVAILABLE))
            << name;
        ASSERT_EQ(factory != nullptr, own) << name;
        if (own) static_cast<IUnknown*>(factory)->Release();
    }
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_OK));
}

TEST_P(ClassObject, AnswersIUnknownAndIClassFactory) {
    const auto factory = Factory();
    ComPtr<IUnknown> identity;
    EXPECT_EQ(Code(factory->QueryInterface(IID_IUnknown, identity.PutVoid())), Code(S_OK));
    EXPECT_EQ(identity.Get(), factory.Get());
    void* other = this;
    EXPECT_EQ(Code(factory->QueryInterface(IID_ILarynthAttributes, &other)), Code(E_NOINTERFACE));
    EXPECT_EQ(other, nullptr);
    other = this;
    EXPECT_EQ(Code(Module.GetClassObject(GetParam().Class, IID_ITTSObjectList, &other)), Code(E_NOINTERFACE));
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(Code(factory->QueryInterface(IID_IUnknown, nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(factory->CreateInstance(nullptr, IID_IUnknown, nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(Module.GetClassObject(GetParam().Class, IID_IUnknown, nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(Module.GetClassObject(CLSID_TTSVoicingSourceRBF, IID_IUnknown, nullptr)), Code(E_POINTER));
}

TEST_P(ClassObject, WritesNothingThroughAPointerThatCannotBeWritten) {
    static const void* const kConstant = nullptr;
    void** const readOnly = const_cast<void**>(&kConstant);
    EXPECT_EQ(Code(Module.GetClassObject(GetParam().Class, IID_IUnknown, readOnly)), Code(E_POINTER));
    EXPECT_EQ(Code(Factory()->CreateInstance(nullptr, IID_IUnknown, readOnly)), Code(E_POINTER));
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_OK));
}

TEST_P(ClassObject, IsOneAndHoldsTheModuleByFurtherReferencesOnly) {
    auto first = Factory();
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_FALSE));
    auto second = Factory();
    EXPECT_EQ(second.Get(), first.Get());
    first.Release();
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_FALSE));
    EXPECT_EQ(second.Detach()->Release(), 1U) << "what is left is the class table's own";
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_OK));
}

TEST_P(ClassObject, HoldsTheModuleByServerLocks) {
    const auto lock = [&](BOOL on) { EXPECT_EQ(Code(Factory()->LockServer(on)), Code(S_OK)); };
    lock(TRUE);
    lock(2);  // any value but 0 is true
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_FALSE));
    lock(FALSE);
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_FALSE));
    lock(FALSE);
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_OK));
}

TEST_P(ClassObject, StaysCountedWhenManyThreadsUseIt) {
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 500; ++round) {
                ComPtr<IClassFactory> factory;
                ComPtr<IUnknown> object;
                if (Module.GetClassObject(GetParam().Class, IID_IClassFactory, factory.PutVoid()) != S_OK ||
                    factory->CreateInstance(nullptr, IID_IUnknown, object.PutVoid()) != S_OK ||
                    Module.CanUnload() != S_FALSE) {
                    ++failures;
                }
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_OK));
}

const ModuleRow kModules[] = {
    {"Larynth", LARYNTH_MODULE, Offer::Larynth, CLSID_Larynth},
    {"Companion", LARYNTH_COMPANION_MODULE, Offer::Companion, CLSID_TTSVoice},
};
std::string RowName(const testing::TestParamInfo<ModuleRow>& row) { return row.param.Name; }
INSTANTIATE_TEST_SUITE_P(Modules, ClassObject, testing::ValuesIn(kModules), RowName);

class Unloading : public testing::TestWithParam<ModuleRow> {};

TEST_P(Unloading, HappensOnlyWhenNothingOfTheModuleIsHeld) {
    const auto& [name, path, own, id] = GetParam();
    ASSERT_EQ(Code(LarynthLoadModule(path)), Code(S_OK)) << LarynthLastError();
    EXPECT_EQ(Code(ModuleUnderTest(path).CanUnload()), Code(S_OK)) << "just loaded";

    ComPtr<IUnknown> object;
    ASSERT_EQ(Code(object.Create(id)), Code(S_OK));
    CoFreeUnusedLibraries();
    EXPECT_TRUE(ModuleUnderTest::IsInMemory(path)) << "an object lives";
    object.Release();
    CoFreeUnusedLibraries();
    EXPECT_FALSE(ModuleUnderTest::IsInMemory(path));

    ASSERT_EQ(Code(LarynthLoadModule(path)), Code(S_OK)) << "a second time";
    EXPECT_EQ(Code(object.Create(id)), Code(S_OK));
}

INSTANTIATE_TEST_SUITE_P(Modules, Unloading, testing::ValuesIn(kModules), RowName);

}  // namespace
