// SPDX-License-Identifier: MIT
// What every creatable class promises as a component, and every module as a module, checked on both as built.
#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <larynth/Larynth.h>

#include "tests/support/Allocations.h"
#include "tests/support/BadPointer.h"
#include "tests/support/Code.h"
#include "tests/support/ForwardingOuter.h"
#include "tests/support/InThreads.h"
#include "tests/support/LoadedModule.h"

namespace {

using larynth::ForwardingOuter;

/// A component module of the build, loaded through the runtime; its entry points for direct calls.
struct ModuleUnderTest {
    explicit ModuleUnderTest(const char* path) {
        EXPECT_TRUE(LoadForClasses(path)) << path;
        GetClassObject = reinterpret_cast<decltype(GetClassObject)>(EntryOf(path, "DllGetClassObject"));
        CanUnload = reinterpret_cast<decltype(CanUnload)>(EntryOf(path, "DllCanUnloadNow"));
    }

    HRESULT(LARYNTH_CALL* GetClassObject)(REFCLSID rclsid, REFIID riid, void** ppv);
    HRESULT(LARYNTH_CALL* CanUnload)();
};

using NamedInterface = std::pair<std::string_view, IID>;

// clang-format off
#define NAMED(Interface) NamedInterface{#Interface, IID_##Interface}
/// Every interface that an object could be asked for, except IUnknown.
const NamedInterface kInterfaces[] = {
    NAMED(IClassFactory), NAMED(ILarynthParams), NAMED(ILarynthVoiceParams), NAMED(ILarynthAspirationParams),
    NAMED(ILarynthFricationParams), NAMED(ILarynthVocalTractParams), NAMED(ILarynthParallelTractParams),
    NAMED(ILarynthVocalTractFilterParams), NAMED(ITTSDoublePacket), NAMED(ITTSTruKlattParams),
    NAMED(ITTSDecKlattParams), NAMED(IACLClone), NAMED(IACLPropertyIndex), NAMED(IACLPropertySink),
    NAMED(IACLPropertySource), NAMED(IACLValueHolder), NAMED(IACLPersistProperties),
    NAMED(ITTSResonatorFBParams), NAMED(ITTSResonatorABCParams), NAMED(ITTSResonatorStructInfo),
    NAMED(ITTSAntiResonatorFBParams), NAMED(ITTSAntiResonatorABCParams), NAMED(ITTSAntiResonatorStructInfo),
    NAMED(ITTSVoicingSource), NAMED(ITTSVoicingSourceStd), NAMED(ITTSVoicingSourceRBF),
    NAMED(ITTSVoicingSourceWave), NAMED(ITTSVoicingSourceFilter), NAMED(ITTSAspirationSource),
    NAMED(ITTSFricationSource), NAMED(ITTSObjectList), NAMED(ITTSSyncHolder), NAMED(ITTSSoundData),
    NAMED(ILarynthAttributes), NAMED(IACLIOProcess), NAMED(ILarynthStruct), NAMED(ITTSVocalTract),
    NAMED(ITTSVocalTractR), NAMED(ITTSVocalTractF), NAMED(ITTSParallelTract), NAMED(ITTSVoice),
    NAMED(ITTSVoiceSourceParams), NAMED(ITTSVoiceFilterParams), NAMED(ITTSVoiceSettings), NAMED(ILarynthState),
    NAMED(ILarynthSignals),
};
// clang-format on

const IID& IdOf(std::string_view name) {
    return std::ranges::find(kInterfaces, name, &NamedInterface::first)->second;
}

struct ClassRow {
    const char* Name;
    CLSID Id;
    const char* Module;
    std::vector<std::string_view> Interfaces;  // in the order of the class's list
};
void PrintTo(const ClassRow& row, std::ostream* out) { *out << row.Name; }

/// Something that is not null, to see that a failure writes null.
void* const kUntouched = reinterpret_cast<void*>(1);

class Conformance : public testing::TestWithParam<ClassRow> {
  protected:
    HRESULT Create(IUnknown* outer, REFIID riid, void** ppv) const {
        return CoCreateInstance(Row.Id, outer, CLSCTX_INPROC_SERVER, riid, ppv);
    }
    ComPtr<IUnknown> New(IUnknown* outer = nullptr) const {
        ComPtr<IUnknown> object;
        EXPECT_EQ(Code(Create(outer, IID_IUnknown, object.PutVoid())), "S_OK");
        return object;
    }
    void ExpectNothingLeft(ULONG references) const {
        EXPECT_EQ(references, 0U);
        EXPECT_EQ(Code(Module.CanUnload()), "S_OK");
    }

    const ClassRow& Row = GetParam();
    ModuleUnderTest Module{Row.Module};
};

TEST_P(Conformance, AnswersAndIsCreatedByItsInterfacesAndNoOther) {
    auto object = New();
    ForwardingOuter outer;
    for (const auto& [name, id] : kInterfaces) {
        SCOPED_TRACE(name);
        const bool listed = std::ranges::count(Row.Interfaces, name) != 0;
        void *answer = kUntouched, *created = kUntouched, *part = kUntouched;
        EXPECT_EQ(Code(object->QueryInterface(id, &answer)), listed ? "S_OK" : "E_NOINTERFACE");
        EXPECT_EQ(Code(Create(nullptr, id, &created)), listed ? "S_OK" : "E_NOINTERFACE");
        for (void* face : {answer, created}) {
            ASSERT_EQ(face != nullptr, listed);
            EXPECT_EQ(listed ? static_cast<IUnknown*>(face)->Release() : 0,
                      face == answer && listed ? 1U : 0U);
        }
        EXPECT_EQ(Code(Create(&outer, id, &part)), "CLASS_E_NOAGGREGATION");
        EXPECT_EQ(part, nullptr);
    }
    EXPECT_EQ(Code(object->QueryInterface(IID_IUnknown, nullptr)), "E_POINTER");
    EXPECT_EQ(outer.references, 0);
    EXPECT_EQ(Code(Module.CanUnload()), "S_FALSE");
    ExpectNothingLeft(object.Detach()->Release());
}

TEST_P(Conformance, HasOneCountAndOneIdentityWhichIsItsFirstInterface) {
    auto identity = New();
    ULONG references = 1;
    std::vector<ComPtr<IUnknown>> held;
    for (const auto from : Row.Interfaces) {
        SCOPED_TRACE(from);
        ComPtr<IUnknown> source, same;
        ASSERT_EQ(Code(identity->QueryInterface(IdOf(from), source.PutVoid())), "S_OK");
        EXPECT_EQ(source->AddRef(), ++references + 1);
        EXPECT_EQ(source->Release(), references);
        EXPECT_TRUE(!held.empty() || source.Get() == identity.Get());
        ASSERT_EQ(Code(source->QueryInterface(IID_IUnknown, same.PutVoid())), "S_OK");
        EXPECT_EQ(same.Get(), identity.Get());
        for (const auto to : Row.Interfaces) {
            ComPtr<IUnknown> direct, crossed;
            identity->QueryInterface(IdOf(to), direct.PutVoid());
            EXPECT_EQ(Code(source->QueryInterface(IdOf(to), crossed.PutVoid())), "S_OK") << to;
            EXPECT_EQ(crossed.Get(), direct.Get()) << to;
        }
        held.push_back(std::move(source));
    }
    identity.Release();  // any interface keeps the object alive, not only the one it was created by
    for (auto& pointer : held) references = pointer.Detach()->Release();
    ExpectNothingLeft(references);
}

TEST_P(Conformance, DelegatesToAnOuterObject) {
    ForwardingOuter outer;
    outer.part = New(&outer);
    IUnknown* const inner = outer.part.Get();
    EXPECT_EQ(outer.references, 0) << "a part holds no reference on the whole";
    for (const auto name : Row.Interfaces) {
        SCOPED_TRACE(name);
        ComPtr<IUnknown> face, identity;
        ASSERT_EQ(Code(inner->QueryInterface(IdOf(name), face.PutVoid())), "S_OK");
        EXPECT_NE(face.Get(), inner);
        EXPECT_EQ(outer.references, 1);
        EXPECT_EQ(face->AddRef(), 2U);
        EXPECT_EQ(face->Release(), 1U);
        ASSERT_EQ(Code(face->QueryInterface(IID_IUnknown, identity.PutVoid())), "S_OK");
        EXPECT_EQ(identity.Get(), &outer);
    }
    ComPtr<IUnknown> nondelegating;
    ASSERT_EQ(Code(inner->QueryInterface(IID_IUnknown, nondelegating.PutVoid())), "S_OK");
    EXPECT_EQ(nondelegating.Get(), inner);
    EXPECT_EQ(nondelegating.Detach()->Release(), 1U);
    ExpectNothingLeft(outer.part.Detach()->Release());
    EXPECT_EQ(outer.references, 0);
}

TEST_P(Conformance, ReportsEveryAllocationThatFailsOnCreation) {
    New();  // from here on the modules are known
    ForwardingOuter outer;
    for (IUnknown* owner : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&outer)}) {
        bool failed = true;
        int allocations = 0;
        while (failed) {
            void* object = kUntouched;
            HRESULT hr = S_OK;
            {
                const AllocationFailure failure(++allocations);
                hr = Create(owner, IID_IUnknown, &object);
                failed = failure.Happened();
            }
            EXPECT_EQ(Code(hr), failed ? "E_OUTOFMEMORY" : "S_OK") << "allocation " << allocations;
            ASSERT_EQ(object == nullptr, failed) << "allocation " << allocations;
            ExpectNothingLeft(failed ? 0 : static_cast<IUnknown*>(object)->Release());
        }
        EXPECT_GT(allocations, 1) << "an object takes memory";
    }
}

TEST_P(Conformance, IsOfferedByItsModuleAloneThroughOneClassObject) {
    const ModuleUnderTest other(Row.Module == std::string_view(LARYNTH_MODULE) ? LARYNTH_COMPANION_MODULE
                                                                               : LARYNTH_MODULE);
    void *missing = kUntouched, *refused = kUntouched;
    EXPECT_EQ(Code(other.GetClassObject(Row.Id, IID_IUnknown, &missing)), "CLASS_E_CLASSNOTAVAILABLE");
    EXPECT_EQ(Code(Module.GetClassObject(Row.Id, IID_ITTSVoice, &refused)), "E_NOINTERFACE");
    EXPECT_EQ(missing, nullptr);
    EXPECT_EQ(refused, nullptr);
    ComPtr<IClassFactory> factory, again;
    ASSERT_EQ(Code(Module.GetClassObject(Row.Id, factory.Id(), factory.PutVoid())), "S_OK");
    ASSERT_EQ(Code(Module.GetClassObject(Row.Id, again.Id(), again.PutVoid())), "S_OK");
    EXPECT_EQ(again.Get(), factory.Get());
    for (void** const bad : {static_cast<void**>(nullptr), ReadOnly<void*>()}) {
        EXPECT_EQ(Code(Module.GetClassObject(Row.Id, IID_IUnknown, bad)), "E_POINTER");
        EXPECT_EQ(Code(Module.GetClassObject(GUID_NULL, IID_IUnknown, bad)), "E_POINTER");
        EXPECT_EQ(Code(factory->QueryInterface(IID_IUnknown, bad)), "E_POINTER");
        EXPECT_EQ(Code(factory->CreateInstance(nullptr, IID_IUnknown, bad)), "E_POINTER");
    }
    again.Release();
    factory->LockServer(2);  // any value but 0 is true
    IClassFactory* const held = factory.Detach();
    EXPECT_EQ(held->Release(), 1U) << "what is left is the class table's own";
    EXPECT_EQ(Code(Module.CanUnload()), "S_FALSE");
    held->LockServer(FALSE);
    EXPECT_EQ(Code(Module.CanUnload()), "S_OK");
}

// clang-format off
#define CLASS(Class, Module, ...) {#Class, CLSID_##Class, Module, {__VA_ARGS__}}
constexpr char kLarynth[] = LARYNTH_MODULE, kCompanion[] = LARYNTH_COMPANION_MODULE;
const std::vector<ClassRow> kClasses = {
    CLASS(TTSVoicingSourceFilter, kLarynth, "ITTSVoicingSourceFilter"),
    CLASS(TTSVoicingSourceWave, kLarynth,
          "IACLClone", "ITTSVoicingSource", "ITTSVoicingSourceWave", "IACLPersistProperties"),
    CLASS(TTSFricationSource, kLarynth, "ITTSFricationSource"),
    CLASS(TTSAspirationSource, kLarynth, "ITTSAspirationSource"),
    CLASS(TTSVocalTractR, kLarynth, "ITTSVocalTract", "ITTSVocalTractR"),
    CLASS(TTSParallelTract, kLarynth, "ITTSParallelTract"),
    CLASS(TTSVoicingSourceStd, kLarynth, "ITTSVoicingSource", "ITTSVoicingSourceStd"),
    CLASS(Larynth, kLarynth,
          "ILarynthAttributes", "IACLIOProcess", "ILarynthStruct", "ILarynthState", "ILarynthSignals"),
    CLASS(TTSAntiResonatorParams, kLarynth,
          "ITTSAntiResonatorFBParams", "ITTSAntiResonatorABCParams", "ITTSAntiResonatorStructInfo"),
    CLASS(TTSResonatorParams, kLarynth,
          "ITTSResonatorFBParams", "ITTSResonatorABCParams", "ITTSResonatorStructInfo"),
    CLASS(LarynthParams, kLarynth,
          "ILarynthParams", "IACLClone", "ITTSTruKlattParams", "ITTSDecKlattParams", "ITTSDoublePacket",
          "ILarynthVoiceParams", "ILarynthAspirationParams", "ILarynthFricationParams",
          "ILarynthVocalTractParams", "ILarynthParallelTractParams", "ILarynthVocalTractFilterParams"),
    CLASS(TTSVocalTractF, kLarynth, "ITTSVocalTract", "ITTSVocalTractF"),
    CLASS(TTSObjectList, kCompanion, "ITTSObjectList"),
    CLASS(TTSSoundData, kCompanion, "ITTSSoundData", "ITTSSyncHolder"),
    CLASS(TTSStreamHolder, kCompanion, "ITTSSyncHolder", "ITTSObjectList"),
    CLASS(TTSVoice, kCompanion,
          "ITTSVoice", "ITTSVoiceSourceParams", "ITTSVoiceFilterParams", "ITTSVoiceSettings"),
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Classes, Conformance, testing::ValuesIn(kClasses),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(Modules, RenderInEightThreadsWhatTheyRenderInOneAndAreUnloadedAfterwards) {
    const ModuleUnderTest larynth(LARYNTH_MODULE), companion(LARYNTH_COMPANION_MODULE);
    const auto render = [](ComPtr<IACLIOProcess>& synthesizer) {
        ComPtr<ITTSDoublePacket> packet;
        ComPtr<ILarynthParams> timing;
        synthesizer.Create(CLSID_Larynth);
        synthesizer->Initialize(nullptr, GUID_NULL);
        packet.Create(CLSID_LarynthParams);
        timing.Query(packet.Get());
        timing->SetFrameLen(300);
        for (const auto& [item, value] :  // F0, FL, AV; no noise, which all of them share
             {std::pair(0, 120.0), {2, 0.1}, {6, 900.0}, {7, 0.0}, {8, 0.0}}) {
            packet->SetItemValue(item, value);
        }
        std::vector<short> sound;
        for (int i = 0; i < 40; ++i) {
            ComPtr<IUnknown> output;
            ComPtr<ITTSSoundData> block;
            const short* samples = nullptr;
            int count = 0;
            synthesizer->Calculate(packet.Get(), GUID_NULL, GUID_NULL, output.Put());
            if (block.TryQuery(output.Get())) block->GetSamples(&samples, &count);
            sound.insert(sound.end(), samples, samples + count);
        }
        return sound;
    };
    ComPtr<IACLIOProcess> held;
    const std::vector<short> expected = render(held);
    EXPECT_EQ(expected.size(), 12000U);
    EXPECT_NE(std::ranges::count(expected, 0), 12000);
    InThreads(8, [&](int) {
        ComPtr<IACLIOProcess> own;
        EXPECT_EQ(render(own), expected);
    });
    CoFreeUnusedLibraries();
    EXPECT_FALSE(InMemory(LARYNTH_COMPANION_MODULE)) << "no synthesizer keeps its classes";
    EXPECT_TRUE(InMemory(LARYNTH_MODULE));
    held.Release();
    CoFreeUnusedLibraries();
    EXPECT_FALSE(InMemory(LARYNTH_MODULE));
}

}  // namespace
