// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <regex>

#include <larynth/ComException.h>

#include "module/Registrar.h"
#include "tests/support/Code.h"
#include "tests/support/Fake.h"
#include "tests/support/TestStore.h"

namespace larynth {

namespace {

/// The store, whose calls obey the script, but for Rollback.
class FailingStore final : public test::Fake<ILarynthRegistry> {
  public:
    using Fake::Fake;
    using Store = ILarynthRegistry;
    ComPtr<Store> real = TestStore::Open();

    HRESULT LARYNTH_CALL Begin() override { return Pass(&Store::Begin); }
    HRESULT LARYNTH_CALL Commit() override { return Pass(&Store::Commit); }
    HRESULT LARYNTH_CALL Rollback() override { return real->Rollback(); }
    HRESULT LARYNTH_CALL CreateKey(LPCSTR key) override { return Pass(&Store::CreateKey, key); }
    HRESULT LARYNTH_CALL DeleteKey(LPCSTR key) override { return Pass(&Store::DeleteKey, key); }
    HRESULT LARYNTH_CALL SetValue(LPCSTR key, LPCSTR name, LPCSTR value) override {
        return Pass(&Store::SetValue, key, name, value);
    }
    HRESULT LARYNTH_CALL GetValue(LPCSTR key, LPCSTR name, LPCSTR* value) override {
        return Pass(&Store::GetValue, key, name, value);
    }
    HRESULT LARYNTH_CALL GetCounts(LPCSTR key, int* subkeys, int* values) override {
        return Pass(&Store::GetCounts, key, subkeys, values);
    }
    HRESULT LARYNTH_CALL GetSubkey(LPCSTR key, int index, LPCSTR* name) override {
        return Pass(&Store::GetSubkey, key, index, name);
    }

  private:
    HRESULT Pass(auto method, auto... arguments) {
        const HRESULT hr = script.Next("store");
        return FAILED(hr) ? hr : (real.Get()->*method)(arguments...);
    }
};

// In the form of a class's script.
constexpr char kClassScript[] = R"(HKCR {
    Prog.1 = s 'A Class' { CLSID = s '{id}' }
    NoRemove CLSID {
        ForceRemove {00000000-0000-0000-0000-000000000001} = s 'A Class' {
            Server = s '%MODULE%' { val Model = s 'both' }
        }
    }
})";
constexpr int kCalls = 14;  // Begin, Commit, six keys created, one deleted before, five values

class RegistrarTest : public testing::Test {
  protected:
    using Walk = void (Registrar::*)(const RegistryScript&);

    std::string Run(Walk walk, const std::string& script) {
        try {
            (Registrar(store_).*walk)(ParseRegistryScript(script, "/m.so"));
            return "S_OK";
        } catch (const Zelvani::ComException& failure) {
            return Code(failure.Code());
        }
    }
    std::string Register(const std::string& script) { return Run(&Registrar::Register, script); }
    std::string Unregister(const std::string& script) { return Run(&Registrar::Unregister, script); }

    /// What is below HKEY_CLASSES_ROOT, in one line, as others see it.
    static std::string Keys() {
        std::string text = TestStore::Listing(*TestStore::Open().Get(), "HKEY_CLASSES_ROOT");
        const std::pair<const char*, const char*> shorter[] = {
            {"HKEY_CLASSES_ROOT\n|\n", ""}, {R"(HKEY_CLASSES_ROOT\\)", " "}, {" ([=+]) ", "$1"}};
        for (const auto& [from, to] : shorter) text = std::regex_replace(text, std::regex(from), to);
        return text;
    }

    TestStore folder_;
    test::Script script_;
    FailingStore store_{script_};
};

}  // namespace

TEST_F(RegistrarTest, AFlagDecidesWhatHappensToWhatWasThereBefore) {
    const struct {
        std::string before, script;
        const char *registered, *unregistered;
    } rows[] = {
        {"A = s 'old' { Others }", "A = s 'new' { B }", " A=new A\\B A\\Others", " A=new A\\Others"},
        {"A = s 'old' { Others }", "NoRemove A { B }", " A=old A\\B A\\Others", " A=old A\\Others"},
        {"A = s 'old' { Others }", "ForceRemove A { B }", " A A\\B", ""},
        {"A = s 'old' { Others }", "Delete A { val C = s 'c' }", " A=old+1 A\\Others", ""},
        {"A { val Name = s '' }", "A { B }", " A+1 A\\B", " A+1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.script);
        ASSERT_EQ(Register("HKCR { ForceRemove A } HKCR { " + row.before + " }"), "S_OK");
        EXPECT_EQ(Register("HKCR { " + row.script + " }"), "S_OK");
        EXPECT_EQ(Keys(), row.registered);
        EXPECT_EQ(Unregister("HKCR { " + row.script + " }"), "S_OK");
        EXPECT_EQ(Keys(), row.unregistered);
    }
}

TEST_F(RegistrarTest, AFailureTakesBackWhatTheBlockHadWritten) {
    for (int call = 1; call <= kCalls; ++call) {
        SCOPED_TRACE(call);
        script_.Restart();
        ASSERT_EQ(Register("HKCR { Prog.1 = s 'older' }"), "S_OK");
        const std::string before = Keys();
        script_.Restart(call);
        EXPECT_EQ(Register(kClassScript), "DISP_E_EXCEPTION");
        const bool committed = call > 1 && call < kCalls;
        EXPECT_TRUE(committed ? Keys().empty() || Keys() == " CLSID" : Keys() == before) << Keys();
        EXPECT_EQ(Code(store_.real->Rollback()), "E_FAIL") << "no transaction is left open";
    }
}

TEST_F(RegistrarTest, OneBlocksFailureLeavesTheOthers) {
    constexpr char kScript[] = "HKCR { ForceRemove A ForceRemove B } HKLM { C }";
    script_.Restart(9);  // Begin, the root, A and B each deleted and created, Commit, Begin, the second root
    EXPECT_EQ(Register(kScript), "DISP_E_EXCEPTION");
    EXPECT_EQ(Keys(), " A B");
    script_.Restart(2);  // the deletion of A
    EXPECT_EQ(Unregister(kScript), "DISP_E_EXCEPTION");
    EXPECT_EQ(Keys(), " A");
}

}  // namespace larynth
