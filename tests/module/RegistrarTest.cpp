// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <larynth/ComException.h>

#include "module/Registrar.h"
#include "tests/support/Code.h"
#include "tests/support/FakeRegistry.h"

namespace larynth {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Keys = FakeRegistry::Keys;

// In the form of a class's script.
constexpr char kClassScript[] = R"(HKCR {
    Prog.1 = s 'A Class' { CLSID = s '{id}' }
    NoRemove CLSID {
        ForceRemove {00000000-0000-0000-0000-000000000001} = s 'A Class' {
            Server = s '%MODULE%' { val Model = s 'both' }
        }
    }
})";

const Keys kClassKeys{
    {"HKEY_CLASSES_ROOT", {}},
    {"HKEY_CLASSES_ROOT\\CLSID", {}},
    {"HKEY_CLASSES_ROOT\\CLSID\\{00000000-0000-0000-0000-000000000001}", {{"", "A Class"}}},
    {"HKEY_CLASSES_ROOT\\CLSID\\{00000000-0000-0000-0000-000000000001}\\Server",
     {{"", "/m.so"}, {"Model", "both"}}},
    {"HKEY_CLASSES_ROOT\\Prog.1", {{"", "A Class"}}},
    {"HKEY_CLASSES_ROOT\\Prog.1\\CLSID", {{"", "{id}"}}},
};

class RegistrarTest : public testing::Test {
  protected:
    HRESULT Register(const char* script) {
        return Run([&](Registrar& registrar, const RegistryScript& read) { registrar.Register(read); },
                   script);
    }
    HRESULT Unregister(const char* script) {
        return Run([&](Registrar& registrar, const RegistryScript& read) { registrar.Unregister(read); },
                   script);
    }

    FakeRegistry registry_;

  private:
    template <class Walk>
    HRESULT Run(Walk walk, const char* script) {
        registry_.calls = 0;
        Registrar registrar(registry_);
        try {
            walk(registrar, ParseRegistryScript(script, "/m.so"));
        } catch (const Zelvani::ComException& failure) {
            return failure.Code();
        }
        EXPECT_FALSE(registry_.InTransaction());
        return S_OK;
    }
};

TEST_F(RegistrarTest, RegisteringWritesWhatTheScriptNamesAndUnregisteringRemovesIt) {
    EXPECT_EQ(Code(Register(kClassScript)), "S_OK");
    EXPECT_EQ(registry_.keys, kClassKeys);
    EXPECT_EQ(Code(Register(kClassScript)), "S_OK");
    EXPECT_EQ(registry_.keys, kClassKeys);
    EXPECT_EQ(Code(Unregister(kClassScript)), "S_OK");
    EXPECT_THAT(registry_.keys, ElementsAre(Pair("HKEY_CLASSES_ROOT", IsEmpty()),
                                            Pair("HKEY_CLASSES_ROOT\\CLSID", IsEmpty())));
    EXPECT_EQ(Code(Unregister(kClassScript)), "S_OK");
}

// What a flag does to a key A that already has a value and a subkey of another's.
TEST_F(RegistrarTest, AFlagDecidesWhatHappensToWhatWasThereBefore) {
    const Keys before{{"HKEY_CLASSES_ROOT\\A", {{"", "old"}, {"Other", "1"}}},
                      {"HKEY_CLASSES_ROOT\\A\\Others", {}}};
    const struct {
        const char* script;
        Keys registered;
        Keys unregistered;
    } rows[] = {
        {"HKCR { A = s 'new' { B } }",
         {{"HKEY_CLASSES_ROOT", {}},
          {"HKEY_CLASSES_ROOT\\A", {{"", "new"}, {"Other", "1"}}},
          {"HKEY_CLASSES_ROOT\\A\\B", {}},
          {"HKEY_CLASSES_ROOT\\A\\Others", {}}},
         {{"HKEY_CLASSES_ROOT", {}},
          {"HKEY_CLASSES_ROOT\\A", {{"", "new"}, {"Other", "1"}}},
          {"HKEY_CLASSES_ROOT\\A\\Others", {}}}},
        {"HKCR { NoRemove A { B } }",
         {{"HKEY_CLASSES_ROOT", {}},
          {"HKEY_CLASSES_ROOT\\A", {{"", "old"}, {"Other", "1"}}},
          {"HKEY_CLASSES_ROOT\\A\\B", {}},
          {"HKEY_CLASSES_ROOT\\A\\Others", {}}},
         {{"HKEY_CLASSES_ROOT", {}},
          {"HKEY_CLASSES_ROOT\\A", {{"", "old"}, {"Other", "1"}}},
          {"HKEY_CLASSES_ROOT\\A\\Others", {}}}},
        {"HKCR { ForceRemove A { B } }",
         {{"HKEY_CLASSES_ROOT", {}}, {"HKEY_CLASSES_ROOT\\A", {}}, {"HKEY_CLASSES_ROOT\\A\\B", {}}},
         {{"HKEY_CLASSES_ROOT", {}}}},
        {"HKCR { Delete A { val C = s 'c' } }",
         {{"HKEY_CLASSES_ROOT", {}},
          {"HKEY_CLASSES_ROOT\\A", {{"", "old"}, {"C", "c"}, {"Other", "1"}}},
          {"HKEY_CLASSES_ROOT\\A\\Others", {}}},
         {{"HKEY_CLASSES_ROOT", {}}}},
    };
    for (const auto& row : rows) {
        registry_.keys = before;
        EXPECT_EQ(Code(Register(row.script)), "S_OK");
        EXPECT_EQ(registry_.keys, row.registered) << row.script;
        EXPECT_EQ(Code(Unregister(row.script)), "S_OK");
        EXPECT_EQ(registry_.keys, row.unregistered) << row.script;
    }
}

TEST_F(RegistrarTest, AKeyWithoutFlagGoesUnlessItHasASubkeyOrANamedValue) {
    const struct {
        Keys before;
        bool goes;
    } rows[] = {
        {{{"HKEY_CLASSES_ROOT\\A", {}}}, true},
        {{{"HKEY_CLASSES_ROOT\\A", {{"", "default"}}}}, true},
        {{{"HKEY_CLASSES_ROOT\\A", {}}, {"HKEY_CLASSES_ROOT\\A\\B", {{"", "default"}}}}, true},
        {{{"HKEY_CLASSES_ROOT\\A", {{"Name", ""}}}}, false},
        {{{"HKEY_CLASSES_ROOT\\A", {}}, {"HKEY_CLASSES_ROOT\\A\\C", {}}}, false},
        {{{"HKEY_CLASSES_ROOT\\A", {}}, {"HKEY_CLASSES_ROOT\\A\\B", {{"Name", ""}}}}, false},
    };
    for (const auto& row : rows) {
        registry_.keys = row.before;
        EXPECT_EQ(Code(Unregister("HKCR { A { B } }")), "S_OK");
        EXPECT_EQ(registry_.keys, row.goes ? Keys{} : row.before) << testing::PrintToString(row.before);
    }
}

TEST_F(RegistrarTest, AFailureTakesBackWhatTheBlockHadWritten) {
    const Keys onlyStays{{"HKEY_CLASSES_ROOT", {}}, {"HKEY_CLASSES_ROOT\\CLSID", {}}};
    ASSERT_EQ(Code(Register(kClassScript)), "S_OK");
    const int calls = registry_.calls;
    ASSERT_EQ(calls, 14);  // Begin, Commit, six keys created, one deleted before, five values
    for (int call = 1; call <= calls; ++call) {
        registry_.keys.clear();
        registry_.failingCall = call;
        EXPECT_EQ(Code(Register(kClassScript)), "DISP_E_EXCEPTION") << call;
        EXPECT_FALSE(registry_.InTransaction()) << call;
        for (const auto& [path, values] : registry_.keys)
            EXPECT_TRUE(onlyStays.contains(path)) << call << path;
    }
}

TEST_F(RegistrarTest, AStoreThatStaysBadIsLeftAsItWas) {
    const Keys before{{"HKEY_CLASSES_ROOT\\Prog.1", {{"", "older"}}}};
    registry_.staysBad = true;
    for (int call = 1; call <= 14; ++call) {
        registry_.keys = before;
        registry_.failingCall = call;
        EXPECT_EQ(Code(Register(kClassScript)), "DISP_E_EXCEPTION") << call;
        EXPECT_EQ(registry_.keys, before) << call;
        EXPECT_FALSE(registry_.InTransaction()) << call;
    }
}

TEST_F(RegistrarTest, BlocksBeforeTheOneThatFailsStay) {
    registry_.failingCall = 7;  // Begin, two keys, Commit, then the second block: Begin, its root, B
    EXPECT_EQ(Code(Register("HKCR { A } HKLM { B }")), "DISP_E_EXCEPTION");
    EXPECT_EQ(registry_.keys,
              (Keys{{"HKEY_CLASSES_ROOT", {}}, {"HKEY_CLASSES_ROOT\\A", {}}, {"HKEY_LOCAL_MACHINE", {}}}));
}

TEST_F(RegistrarTest, UnregisteringGoesOnAfterAFailureAndReportsIt) {
    ASSERT_EQ(Code(Register("HKCR { ForceRemove A ForceRemove B } HKLM { C }")), "S_OK");
    registry_.failingCall = 2;  // the deletion of A
    EXPECT_EQ(Code(Unregister("HKCR { ForceRemove A ForceRemove B } HKLM { C }")), "DISP_E_EXCEPTION");
    EXPECT_EQ(registry_.keys,
              (Keys{{"HKEY_CLASSES_ROOT", {}}, {"HKEY_CLASSES_ROOT\\A", {}}, {"HKEY_LOCAL_MACHINE", {}}}));
}

}  // namespace

}  // namespace larynth
