// SPDX-License-Identifier: MIT
// The generic half's registration around a class table and scripts of the test's own: what happens when one
// fails.
#include <gtest/gtest.h>

#include <larynth/TypeLibrary.h>

#include "module/ClassTable.h"
#include "module/EntryPoints.h"
#include "tests/support/Code.h"
#include "tests/support/TestStore.h"

namespace larynth {

namespace {

// Numbers of resources: scripts that write one key each, a malformed one, and one that does not exist.
constexpr LONG kFirst = 1;
constexpr LONG kSecond = 2;
constexpr LONG kMalformed = 3;
constexpr LONG kMissing = 4;

constinit ClassEntry classTable[] = {{{1, 0, 0, {}}, kFirst, nullptr},
                                     {{2, 0, 0, {}}, kMalformed, nullptr},
                                     {{3, 0, 0, {}}, kSecond, nullptr}};
constinit bool hasTypeLibrary = false;

class ScriptedModule : public testing::Test {
  protected:
    static std::string Listing() { return TestStore::Listing(*TestStore::Open().Get(), "HKEY_CURRENT_USER"); }

    TestStore store_;
};

}  // namespace

TEST_F(ScriptedModule, RegisteringStopsAtTheFirstFailureAndEarlierClassesStay) {
    const struct {
        LONG script;
        const char* code;
    } rows[] = {{kMalformed, "DISP_E_EXCEPTION"}, {kMissing, "E_FAIL"}};
    for (const auto& row : rows) {
        classTable[1].Script = row.script;
        EXPECT_EQ(Code(DllRegisterServer()), row.code);
        EXPECT_EQ(Listing(), "HKEY_CURRENT_USER\nHKEY_CURRENT_USER\\First\n");
        EXPECT_EQ(Code(DllUnregisterServer()), "S_OK");
        EXPECT_EQ(Listing(), "HKEY_CURRENT_USER\n");
    }
}

TEST_F(ScriptedModule, UnregisteringPassesOverFailures) {
    classTable[1].Script = kFirst;
    ASSERT_EQ(Code(DllRegisterServer()), "S_OK");
    EXPECT_EQ(Listing(), "HKEY_CURRENT_USER\nHKEY_CURRENT_USER\\First\nHKEY_CURRENT_USER\\Second\n");
    classTable[1].Script = kMalformed;
    EXPECT_EQ(Code(DllUnregisterServer()), "S_OK");
    EXPECT_EQ(Listing(), "HKEY_CURRENT_USER\n");
}

TEST_F(ScriptedModule, ATypeLibraryThatIsNowhereFailsAfterTheClassesWereWritten) {
    classTable[1].Script = kFirst;
    hasTypeLibrary = true;
    EXPECT_EQ(DllRegisterServer(), TYPE_E_CANTLOADLIBRARY);
    hasTypeLibrary = false;
    EXPECT_EQ(Listing(), "HKEY_CURRENT_USER\nHKEY_CURRENT_USER\\First\nHKEY_CURRENT_USER\\Second\n");
}

std::span<ClassEntry> ClassTable() noexcept { return classTable; }

bool HasTypeLibrary() noexcept { return hasTypeLibrary; }

}  // namespace larynth
