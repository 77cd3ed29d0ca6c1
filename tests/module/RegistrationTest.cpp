// SPDX-License-Identifier: MIT
// The modules as built, in a registration store of the test's own.
#include <array>
#include <cstdlib>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include <larynth/Larynth.h>

#include "runtime/classes/OwnModule.h"
#include "tests/support/Code.h"
#include "tests/support/TestStore.h"

namespace {

using testing::HasSubstr;

struct ScriptRow {
    LONG number;
    const char* name;  // of ProgID and description
    const char* classId;
    bool registered;
};

constexpr std::array kLarynthScripts{
    ScriptRow{102, "LarynthParams", "{D3DCF978-3C92-4D18-AAC8-578D8BA84BC0}", true},
    ScriptRow{104, "TTSResonatorParams", "{895434B4-355D-4C65-84B0-15537408A2B5}", true},
    ScriptRow{106, "TTSAntiResonatorParams", "{3E44BC05-FA21-4D55-947E-7E073EA5FDCB}", true},
    ScriptRow{108, "TTSVocalTractParams", "{23988BE3-90DD-4D0F-85C4-9A0C911DE6FD}", false},
    ScriptRow{110, "Larynth", "{7856881E-0461-4F9D-8693-3030B63798FA}", true},
    ScriptRow{112, "TTSVoicingSource", "{6D49C9D8-A620-4E8E-ACBA-2B799E3B3748}", true},
    ScriptRow{114, "TTSVocalTract", "{EEBB6992-D1BD-47F0-99E7-121CEC7F6B9E}", false},
    ScriptRow{116, "TTSParallelTract", "{D688AF4E-11A5-499C-A8B7-D9BBF9837120}", true},
    ScriptRow{118, "TTSVocalTractR", "{E88EDD50-5042-4947-984D-BD487B982FF1}", true},
    ScriptRow{120, "TTSAspirationSource", "{3AD8132F-0E23-47C3-A546-4623B5847C5C}", true},
    ScriptRow{122, "TTSFricationSource", "{EDC28211-6850-460B-AD84-F22BE1B2A2AC}", true},
    ScriptRow{124, "TTSVocalTractF", "{907437DE-FBC7-4DB7-A7FD-B4FCD0A8AEF4}", true},
    ScriptRow{126, "TTSVoicingSourceRBF", "{62689DB9-09A7-4EE7-9A4F-4A9F970A1A4F}", false},
    ScriptRow{128, "TTSVoicingSourceFilter", "{2A4ABF0B-C32D-41C6-B8FC-1B9F9C323459}", true},
    ScriptRow{130, "TTSVoicingSourceWave", "{DC19C734-AEDE-4AAA-96AA-305BA40F8266}", true},
};

constexpr std::array kCompanionScripts{
    ScriptRow{101, "TTSObjectList", "{B26F7395-06DF-41FE-8741-60B8A8B79AB6}", true},
    ScriptRow{102, "TTSSoundData", "{F8095D20-FB5F-46E1-8D3A-9C8A4C60B310}", true},
    ScriptRow{103, "TTSStreamHolder", "{185FD75B-6A28-4832-B30A-0DD60D635B86}", true},
    ScriptRow{104, "TTSVoice", "{D8FF2D9B-C7A3-43F5-B32C-97770F4571A3}", true},
};

/// A class's keys as TestStore::Listing shows them.
std::string KeysOf(const ScriptRow& row, const std::string& module) {
    const std::string root = "HKEY_CLASSES_ROOT\\";
    const std::string prog = std::string("Larynth.") + row.name;
    const std::string text = std::string(" = ") + row.name + " Class\n";
    const std::string id = row.classId;
    const std::string key = root + "CLSID\\" + id;
    return root + prog + text + root + prog + "\\CLSID = " + id + "\n" +           //
           root + prog + ".1" + text + root + prog + ".1\\CLSID = " + id + "\n" +  //
           key + text + key + "\\InprocServer32 = " + module + " + 1\n" +          //
           key + "\\ProgID = " + prog + ".1\n" + key + "\\VersionIndependentProgID = " + prog + "\n";
}

std::string RegisteredKeysOf(ILarynthRegistry& registry, const ScriptRow& row) {
    const std::string root = "HKEY_CLASSES_ROOT\\";
    const std::string prog = root + "Larynth." + row.name;
    return TestStore::Listing(registry, prog) + TestStore::Listing(registry, prog + ".1") +
           TestStore::Listing(registry, root + "CLSID\\" + row.classId);
}

template <class Rows>
void ExpectRegistered(ILarynthRegistry& registry, const Rows& rows, const std::string& module) {
    for (const ScriptRow& row : rows) {
        EXPECT_EQ(RegisteredKeysOf(registry, row), row.registered ? KeysOf(row, module) : "") << row.name;
    }
}

int CountSubkeys(ILarynthRegistry& registry, const char* key) {
    int subkeys = 0;
    int values = 0;
    return SUCCEEDED(registry.GetCounts(key, &subkeys, &values)) ? subkeys : -1;
}

class RegistrationTest : public testing::Test {
  protected:
    TestStore store_;
};

}  // namespace

TEST_F(RegistrationTest, LarynthsKeysAndValuesAreTheseLiterally) {
    ASSERT_EQ(Code(LarynthRegisterModule(LARYNTH_MODULE)), "S_OK") << LarynthLastError();
    const auto registry = TestStore::Open();
    const std::string root = "HKEY_CLASSES_ROOT\\";
    const std::string id = "{7856881E-0461-4F9D-8693-3030B63798FA}";
    const struct {
        std::string key;
        const char* name;
        std::string value;
    } rows[] = {
        {"Larynth.Larynth.1", "", "Larynth Class"},
        {"Larynth.Larynth.1\\CLSID", "", id},
        {"Larynth.Larynth", "", "Larynth Class"},
        {"Larynth.Larynth\\CLSID", "", id},
        {"CLSID\\" + id, "", "Larynth Class"},
        {"CLSID\\" + id + "\\ProgID", "", "Larynth.Larynth.1"},
        {"CLSID\\" + id + "\\VersionIndependentProgID", "", "Larynth.Larynth"},
        {"CLSID\\" + id + "\\InprocServer32", "", LARYNTH_MODULE},
        {"CLSID\\" + id + "\\InprocServer32", "ThreadingModel", "both"},
    };
    for (const auto& row : rows) {
        LPCSTR value = "missing";
        EXPECT_EQ(Code(registry->GetValue((root + row.key).c_str(), row.name, &value)), "S_OK") << row.key;
        EXPECT_EQ(value, row.value) << row.key;
    }
}

TEST_F(RegistrationTest, RegisteringWritesTheClassesOfTheTableAndNoOthers) {
    ASSERT_EQ(Code(LarynthRegisterModule(LARYNTH_MODULE)), "S_OK") << LarynthLastError();
    ASSERT_EQ(Code(LarynthRegisterModule(LARYNTH_COMPANION_MODULE)), "S_OK") << LarynthLastError();
    const auto registry = TestStore::Open();
    ExpectRegistered(*registry.Get(), kLarynthScripts, LARYNTH_MODULE);
    ExpectRegistered(*registry.Get(), kCompanionScripts, LARYNTH_COMPANION_MODULE);
    EXPECT_EQ(CountSubkeys(*registry.Get(), "HKEY_CLASSES_ROOT\\CLSID"), 16);
    EXPECT_EQ(CountSubkeys(*registry.Get(), "HKEY_CLASSES_ROOT"), 2 * 16 + 2) << "CLSID and TypeLib";
    EXPECT_EQ(CountSubkeys(*registry.Get(), "HKEY_CLASSES_ROOT\\TypeLib"), 1);
}

TEST_F(RegistrationTest, UnregisteringLeavesTheClassListAndTheTypeLibrary) {
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK") << "nothing was registered";
    for (const char* module : {LARYNTH_MODULE, LARYNTH_COMPANION_MODULE}) {
        ASSERT_EQ(Code(LarynthRegisterModule(module)), "S_OK") << LarynthLastError();
    }
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK") << LarynthLastError();
    const auto registry = TestStore::Open();
    for (const ScriptRow& row : kLarynthScripts) EXPECT_EQ(RegisteredKeysOf(*registry.Get(), row), "");
    ExpectRegistered(*registry.Get(), kCompanionScripts, LARYNTH_COMPANION_MODULE);
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_COMPANION_MODULE)), "S_OK");
    EXPECT_EQ(CountSubkeys(*registry.Get(), "HKEY_CLASSES_ROOT"), 2);
    EXPECT_EQ(CountSubkeys(*registry.Get(), "HKEY_CLASSES_ROOT\\CLSID"), 0);
    EXPECT_EQ(CountSubkeys(*registry.Get(), "HKEY_CLASSES_ROOT\\TypeLib"), 1);
}

TEST_F(RegistrationTest, AModuleCarriesAScriptForEachClassThatTheSystemNames) {
    const auto check = [](const char* path, const auto& rows) {
        void* const module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(module, nullptr) << dlerror();
        const auto* const table = static_cast<const larynth::Resource*>(dlsym(module, "LarynthResources"));
        std::vector<LONG> numbers;
        for (const auto* row = table; row->type != nullptr; ++row) {
            if (std::string(row->type) == "REGISTRY") numbers.push_back(row->number);
        }
        ASSERT_EQ(numbers.size(), rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(numbers[i], rows[i].number);
            const auto bytes = larynth::FindInTable(table, "REGISTRY", rows[i].number);
            ASSERT_TRUE(bytes);
            const std::string text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
            const std::string prog = std::string("Larynth.") + rows[i].name;
            EXPECT_THAT(text, HasSubstr("    " + prog + ".1 = s '" + rows[i].name + " Class'\n"));
            EXPECT_THAT(text, HasSubstr("    " + prog + " = s '" + rows[i].name + " Class'\n"));
            EXPECT_THAT(text, HasSubstr(std::string("CLSID = s '") + rows[i].classId + "'\n"));
            EXPECT_THAT(text, HasSubstr(std::string("ForceRemove ") + rows[i].classId + " = s '"));
            EXPECT_EQ(text.back(), '\n') << "no terminating zero";
        }
        EXPECT_FALSE(larynth::FindInTable(table, "REGISTRY", 1));
        EXPECT_FALSE(larynth::FindInTable(table, "TYPELIB", 102));
        dlclose(module);
    };
    check(LARYNTH_MODULE, kLarynthScripts);
    check(LARYNTH_COMPANION_MODULE, kCompanionScripts);
}

TEST_F(RegistrationTest, ANewProcessCreatesASynthesizerFromItsClassIdentifierAlone) {
    EXPECT_NE(std::system(LARYNTH_CREATE_FROM_STORE), 0) << "nothing is registered";
    for (const char* module : {LARYNTH_MODULE, LARYNTH_COMPANION_MODULE}) {
        ASSERT_EQ(Code(LarynthRegisterModule(module)), "S_OK") << LarynthLastError();
    }
    EXPECT_EQ(std::system(LARYNTH_CREATE_FROM_STORE), 0);
    ASSERT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_OK");
    EXPECT_NE(std::system(LARYNTH_CREATE_FROM_STORE), 0);
}

TEST_F(RegistrationTest, AModuleIsDescribedWithoutBeingStored) {
    ComPtr<ILarynthRegistry> described;
    ASSERT_EQ(Code(LarynthDescribeModule(LARYNTH_MODULE, described.Put())), "S_OK") << LarynthLastError();
    ExpectRegistered(*described.Get(), kLarynthScripts, LARYNTH_MODULE);
    EXPECT_TRUE(std::filesystem::is_empty(store_.Folder()));
    ASSERT_EQ(Code(LarynthRegisterModule(LARYNTH_COMPANION_MODULE)), "S_OK") << "into the store again";
    EXPECT_EQ(CountSubkeys(*described.Get(), "HKEY_CLASSES_ROOT\\CLSID"), 12);
    EXPECT_EQ(CountSubkeys(*TestStore::Open().Get(), "HKEY_CLASSES_ROOT\\CLSID"), 4);
}

TEST_F(RegistrationTest, AModulesPathMayHoldAnything) {
    const auto folder = store_.Folder() / "it's 100% {odd} = s 'x' %MODULE%";
    std::filesystem::create_directory(folder);
    const auto copy = folder / "m.so";
    std::filesystem::copy_file(LARYNTH_COMPANION_MODULE, copy);
    ASSERT_EQ(Code(LarynthRegisterModule(copy.c_str())), "S_OK") << LarynthLastError();
    ExpectRegistered(*TestStore::Open().Get(), kCompanionScripts, copy.string());
    ComPtr<ITTSSoundData> block;
    EXPECT_EQ(Code(block.Create(CLSID_TTSSoundData)), "S_OK") << LarynthLastError();
    block.Release();
    CoFreeUnusedLibraries();

    // A relative path is registered as the absolute one that it stands for.
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder);
    EXPECT_EQ(Code(LarynthRegisterModule("m.so")), "S_OK") << LarynthLastError();
    std::filesystem::current_path(before);
    ExpectRegistered(*TestStore::Open().Get(), kCompanionScripts, canonical(copy).string());
}

TEST_F(RegistrationTest, AStoreThatCannotBeWrittenFailsTheRegistrationAndIsNamed) {
    const Setting setting("LARYNTH_REGISTRY", store_.Folder().c_str());
    EXPECT_EQ(Code(LarynthRegisterModule(LARYNTH_MODULE)), "DISP_E_EXCEPTION");
    EXPECT_THAT(LarynthLastError(), HasSubstr(LARYNTH_MODULE));
    EXPECT_THAT(LarynthLastError(), HasSubstr(store_.Folder().string()));
    EXPECT_EQ(Code(LarynthUnregisterModule(LARYNTH_MODULE)), "S_FALSE");
    EXPECT_THAT(LarynthLastError(), HasSubstr(store_.Folder().string()));
}
