// SPDX-License-Identifier: MIT
// The generic half of a module around a class table and scripts of the test's own: what no finished module
// shows.
#include <gtest/gtest.h>

#include <larynth/Larynth.h>

#include "module/ClassTable.h"
#include "module/EntryPoints.h"
#include "tests/support/Code.h"
#include "tests/support/TestStore.h"

namespace larynth {

namespace {

// Numbers of resources: scripts that write one key each, a malformed one, and one that does not exist.
constexpr LONG kFirst = 1, kSecond = 2, kMalformed = 3, kMissing = 4;

constinit ClassEntry classTable[] = {{{1, 0, 0, {}}, kFirst, nullptr},
                                     {{2, 0, 0, {}}, kMalformed, nullptr},
                                     {{3, 0, 0, {}}, kSecond, nullptr}};
constinit bool hasTypeLibrary = false;

std::string Listing() { return TestStore::Listing(*TestStore::Open().Get(), "HKEY_CURRENT_USER"); }

}  // namespace

TEST(Kit, RegisteringStopsAtTheFirstFailureAndUnregisteringAtNone) {
    const TestStore store;
    const struct {
        LONG script;
        bool hasTypeLibrary;
        const char *code, *listing;
    } rows[] = {
        {kMalformed, false, "DISP_E_EXCEPTION", "\nHKEY_CURRENT_USER\\First\n"},
        {kMissing, false, "E_FAIL", "\nHKEY_CURRENT_USER\\First\n"},
        {kFirst, true, "TYPE_E_CANTLOADLIBRARY", "\nHKEY_CURRENT_USER\\First\nHKEY_CURRENT_USER\\Second\n"},
        {kFirst, false, "S_OK", "\nHKEY_CURRENT_USER\\First\nHKEY_CURRENT_USER\\Second\n"}};
    for (const auto& row : rows) {
        classTable[1].Script = row.script;
        hasTypeLibrary = row.hasTypeLibrary;
        EXPECT_EQ(Code(DllRegisterServer()), row.code);
        EXPECT_EQ(Listing(), std::string("HKEY_CURRENT_USER") + row.listing);
        classTable[1].Script = kMalformed;
        EXPECT_EQ(Code(DllUnregisterServer()), "S_OK");
        EXPECT_EQ(Listing(), "HKEY_CURRENT_USER\n");
    }
}

std::span<ClassEntry> ClassTable() noexcept { return classTable; }

bool HasTypeLibrary() noexcept { return hasTypeLibrary; }

}  // namespace larynth
