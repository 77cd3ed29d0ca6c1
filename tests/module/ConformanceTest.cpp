// SPDX-License-Identifier: MIT
// What every creatable class promises as a component, checked on both modules as built.
#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/Allocations.h"
#include "tests/module/ModuleUnderTest.h"
#include "tests/module/SystemInterfaces.h"
#include "tests/support/Code.h"

namespace {

struct ClassRow {
    const char* Name;
    CLSID Id;
    const char* Module;
    std::vector<std::string_view> Interfaces;  // in the order of the class's list

    bool Lists(std::string_view name) const {
        return std::find(Interfaces.begin(), Interfaces.end(), name) != Interfaces.end();
    }
};

void PrintTo(const ClassRow& row, std::ostream* out) { *out << row.Name; }

/// A client's object around the tested one. It answers IUnknown itself and passes the rest on.
class Outer final : public IUnknown {
  public:
    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        if (!(riid == IID_IUnknown)) return Part->QueryInterface(riid, ppv);
        *ppv = this;
        AddRef();
        return S_OK;
    }
    ULONG AddRef() override { return ++References; }
    ULONG Release() override { return --References; }

    IUnknown* Part = nullptr;
    ULONG References = 1;
};

class Conformance : public testing::TestWithParam<ClassRow> {
  protected:
    HRESULT Create(IUnknown* outer, REFIID riid, void** ppv) const {
        return CoCreateInstance(Row.Id, outer, CLSCTX_INPROC_SERVER, riid, ppv);
    }

    /// The listed interfaces with their identifiers, in the order of the list.
    std::vector<NamedInterface> Listed() const {
        std::vector<NamedInterface> listed;
        for (std::string_view name : Row.Interfaces) {
            const auto found =
                std::find_if(std::begin(kSystemInterfaces), std::end(kSystemInterfaces),
                             [&](const NamedInterface& candidate) { return candidate.Name == name; });
            EXPECT_NE(found, std::end(kSystemInterfaces)) << name;
            listed.push_back(*found);
        }
        return listed;
    }

    const ClassRow& Row = GetParam();
    ModuleUnderTest Module{Row.Module};
};

/// Something that is not null, to see that a failure writes null.
void* const kUntouched = reinterpret_cast<void*>(1);

TEST_P(Conformance, AnswersItsInterfacesAndNoOther) {
    ComPtr<IUnknown> object;
    ASSERT_EQ(Code(Create(nullptr, IID_IUnknown, object.PutVoid())), Code(S_OK));
    for (const auto& [name, id] : kSystemInterfaces) {
        SCOPED_TRACE(name);
        void* answer = kUntouched;
        const HRESULT expected = Row.Lists(name) ? S_OK : E_NOINTERFACE;
        EXPECT_EQ(Code(object->QueryInterface(id, &answer)), Code(expected));
        EXPECT_EQ(answer != nullptr, Row.Lists(name));
        if (answer != nullptr) static_cast<IUnknown*>(answer)->Release();
    }
    EXPECT_EQ(Code(object->QueryInterface(IID_IUnknown, nullptr)), Code(E_POINTER));
    EXPECT_EQ(object.Detach()->Release(), 0U);
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_OK));
}

TEST_P(Conformance, IsCreatedByAnyOfItsInterfacesAndNoOther) {
    for (const auto& [name, id] : kSystemInterfaces) {
        SCOPED_TRACE(name);
        void* object = kUntouched;
        EXPECT_EQ(Code(Create(nullptr, id, &object)), Code(Row.Lists(name) ? S_OK : E_NOINTERFACE));
        ASSERT_EQ(object != nullptr, Row.Lists(name));
        EXPECT_EQ(Code(Module.CanUnload()), Code(Row.Lists(name) ? S_FALSE : S_OK));
        if (object != nullptr) {
            EXPECT_EQ(static_cast<IUnknown*>(object)->Release(), 0U);
        }
        EXPECT_EQ(Code(Module.CanUnload()), Code(S_OK));
    }
}

TEST_P(Conformance, HasOneIdentityWhichIsItsFirstInterface) {
    ComPtr<IUnknown> identity;
    ASSERT_EQ(Code(Create(nullptr, IID_IUnknown, identity.PutVoid())), Code(S_OK));
    const auto listed = Listed();
    for (const auto& from : listed) {
        ComPtr<IUnknown> source;
        ASSERT_EQ(Code(identity->QueryInterface(from.Id, source.PutVoid())), Code(S_OK)) << from.Name;
        if (from.Name == listed.front().Name) {
            EXPECT_EQ(source.Get(), identity.Get());
        }
        ComPtr<IUnknown> same;
        ASSERT_EQ(Code(source->QueryInterface(IID_IUnknown, same.PutVoid())), Code(S_OK)) << from.Name;
        EXPECT_EQ(same.Get(), identity.Get()) << from.Name;
        for (const auto& to : listed) {
            ComPtr<IUnknown> direct, crossed;
            ASSERT_EQ(Code(identity->QueryInterface(to.Id, direct.PutVoid())), Code(S_OK)) << to.Name;
            ASSERT_EQ(Code(source->QueryInterface(to.Id, crossed.PutVoid())), Code(S_OK))
                << from.Name << to.Name;
            EXPECT_EQ(crossed.Get(), direct.Get()) << from.Name << to.Name;
        }
    }
    EXPECT_EQ(identity.Detach()->Release(), 0U);
}

TEST_P(Conformance, CountsThroughEveryInterfaceTogether) {
    ComPtr<IUnknown> object;
    ASSERT_EQ(Code(Create(nullptr, IID_IUnknown, object.PutVoid())), Code(S_OK));
    ULONG references = 1;
    std::vector<IUnknown*> held;
    for (const auto& [name, id] : Listed()) {
        void* answer = nullptr;
        ASSERT_EQ(Code(object->QueryInterface(id, &answer)), Code(S_OK)) << name;
        held.push_back(static_cast<IUnknown*>(answer));
        EXPECT_EQ(held.back()->AddRef(), references + 2) << name;
        EXPECT_EQ(held.back()->Release(), references + 1) << name;
        ++references;
    }
    object.Release();  // any interface keeps the object alive, not only the one it was created by
    --references;
    for (IUnknown* pointer : held) EXPECT_EQ(pointer->Release(), --references);
    EXPECT_EQ(references, 0U);
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_OK));
}

TEST_P(Conformance, DelegatesToAnOuterObject) {
    Outer outer;
    void* created = nullptr;
    ASSERT_EQ(Code(Create(&outer, IID_IUnknown, &created)), Code(S_OK));
    IUnknown* const inner = outer.Part = static_cast<IUnknown*>(created);
    EXPECT_EQ(outer.References, 1U) << "a part holds no reference on the whole";
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_FALSE));

    for (const auto& [name, id] : Listed()) {
        SCOPED_TRACE(name);
        ComPtr<IUnknown> face;
        ASSERT_EQ(Code(inner->QueryInterface(id, face.PutVoid())), Code(S_OK));
        EXPECT_NE(face.Get(), inner);
        EXPECT_EQ(outer.References, 2U);
        EXPECT_EQ(face->AddRef(), 3U);
        EXPECT_EQ(face->Release(), 2U);
        ComPtr<IUnknown> identity;
        ASSERT_EQ(Code(face->QueryInterface(IID_IUnknown, identity.PutVoid())), Code(S_OK));
        EXPECT_EQ(identity.Get(), &outer);
    }
    EXPECT_EQ(outer.References, 1U);

    ComPtr<IUnknown> nondelegating;
    ASSERT_EQ(Code(inner->QueryInterface(IID_IUnknown, nondelegating.PutVoid())), Code(S_OK));
    EXPECT_EQ(nondelegating.Get(), inner);
    EXPECT_EQ(outer.References, 1U);
    EXPECT_EQ(nondelegating.Detach()->Release(), 1U);
    for (const auto& [name, id] : kSystemInterfaces) {
        if (Row.Lists(name)) continue;
        void* answer = kUntouched;
        EXPECT_EQ(Code(inner->QueryInterface(id, &answer)), Code(E_NOINTERFACE)) << name;
        EXPECT_EQ(answer, nullptr) << name;
    }

    EXPECT_EQ(inner->Release(), 0U);
    EXPECT_EQ(outer.References, 1U);
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_OK));
}

TEST_P(Conformance, IsAggregatedByIUnknownOnly) {
    Outer outer;
    for (const auto& [name, id] : kSystemInterfaces) {
        void* object = kUntouched;
        EXPECT_EQ(Code(Create(&outer, id, &object)), Code(CLASS_E_NOAGGREGATION)) << name;
        EXPECT_EQ(object, nullptr) << name;
    }
    EXPECT_EQ(outer.References, 1U);
    EXPECT_EQ(Code(Module.CanUnload()), Code(S_OK));
}

TEST_P(Conformance, ReportsEveryAllocationThatFailsOnCreation) {
    void* object = nullptr;
    ASSERT_EQ(Code(Create(nullptr, IID_IUnknown, &object)),
              Code(S_OK));  // from here on the factory is cached
    static_cast<IUnknown*>(object)->Release();

    Outer outer;
    for (IUnknown* owner : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&outer)}) {
        for (int ordinal = 1;; ++ordinal) {
            object = kUntouched;
            HRESULT hr = S_OK;
            bool failed = false;
            {
                const AllocationFailure failure(ordinal);
                hr = Create(owner, IID_IUnknown, &object);
                failed = failure.Happened();
            }
            if (!failed) {
                EXPECT_EQ(Code(hr), Code(S_OK));
                EXPECT_GT(ordinal, 1) << "an object takes memory";
                static_cast<IUnknown*>(object)->Release();
                break;
            }
            EXPECT_EQ(Code(hr), Code(E_OUTOFMEMORY)) << "allocation " << ordinal;
            ASSERT_EQ(object, nullptr) << "allocation " << ordinal;
            ASSERT_EQ(Code(Module.CanUnload()), Code(S_OK)) << "allocation " << ordinal;
        }
    }
}

std::vector<ClassRow> LarynthClasses() {
    const char* const module = LARYNTH_MODULE;
    return {
        {"TTSVoicingSourceFilter", CLSID_TTSVoicingSourceFilter, module, {"ITTSVoicingSourceFilter"}},
        {"TTSVoicingSourceWave",
         CLSID_TTSVoicingSourceWave,
         module,
         {"IACLClone", "ITTSVoicingSource", "ITTSVoicingSourceWave", "IACLPersistProperties"}},
        {"TTSFricationSource", CLSID_TTSFricationSource, module, {"ITTSFricationSource"}},
        {"TTSAspirationSource", CLSID_TTSAspirationSource, module, {"ITTSAspirationSource"}},
        {"TTSVocalTractR", CLSID_TTSVocalTractR, module, {"ITTSVocalTract", "ITTSVocalTractR"}},
        {"TTSParallelTract", CLSID_TTSParallelTract, module, {"ITTSParallelTract"}},
        {"TTSVoicingSourceStd",
         CLSID_TTSVoicingSourceStd,
         module,
         {"ITTSVoicingSource", "ITTSVoicingSourceStd"}},
        {"Larynth", CLSID_Larynth, module, {"ILarynthAttributes", "IACLIOProcess", "ILarynthStruct"}},
        {"TTSAntiResonatorParams",
         CLSID_TTSAntiResonatorParams,
         module,
         {"ITTSAntiResonatorFBParams", "ITTSAntiResonatorABCParams", "ITTSAntiResonatorStructInfo"}},
        {"TTSResonatorParams",
         CLSID_TTSResonatorParams,
         module,
         {"ITTSResonatorFBParams", "ITTSResonatorABCParams", "ITTSResonatorStructInfo"}},
        {"LarynthParams",
         CLSID_LarynthParams,
         module,
         {"ILarynthParams", "IACLClone", "ITTSTruKlattParams", "ITTSDecKlattParams", "ITTSDoublePacket",
          "ILarynthVoiceParams", "ILarynthAspirationParams", "ILarynthFricationParams",
          "ILarynthVocalTractParams", "ILarynthParallelTractParams", "ILarynthVocalTractFilterParams"}},
        {"TTSVocalTractF", CLSID_TTSVocalTractF, module, {"ITTSVocalTract", "ITTSVocalTractF"}},
    };
}

std::vector<ClassRow> CompanionClasses() {
    const char* const module = LARYNTH_COMPANION_MODULE;
    return {
        {"TTSObjectList", CLSID_TTSObjectList, module, {"ITTSObjectList"}},
        {"TTSSoundData", CLSID_TTSSoundData, module, {"ITTSSoundData", "ITTSSyncHolder"}},
        {"TTSStreamHolder", CLSID_TTSStreamHolder, module, {"ITTSSyncHolder", "ITTSObjectList"}},
        {"TTSVoice",
         CLSID_TTSVoice,
         module,
         {"ITTSVoice", "ITTSVoiceSourceParams", "ITTSVoiceFilterParams", "ITTSVoiceSettings"}},
    };
}

std::string RowName(const testing::TestParamInfo<ClassRow>& row) { return row.param.Name; }

INSTANTIATE_TEST_SUITE_P(Larynth, Conformance, testing::ValuesIn(LarynthClasses()), RowName);
INSTANTIATE_TEST_SUITE_P(Companion, Conformance, testing::ValuesIn(CompanionClasses()), RowName);

}  // namespace
