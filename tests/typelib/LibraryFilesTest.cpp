// SPDX-License-Identifier: MIT
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <larynth/TypeLibrary.h>

#include "tests/support/Code.h"
#include "tests/support/TestStore.h"

namespace {

namespace fs = std::filesystem;

/// Works in the folder of the store, so that modules are named by short relative paths.
class LibraryFiles : public testing::Test {
  protected:
    LibraryFiles() {
        fs::current_path(store_.Folder());
        fs::create_directory("folder.d");
        for (const char* bare : {"Bare.so", "folder.d/NoExtension", "Broken.so"}) {
            fs::create_symlink(LARYNTH_COMPANION_MODULE, bare);  // carries no library
        }
        std::ofstream("Broken.tlb") << "MSFT";
        std::ofstream("Text.tlb") << "MSF is not enough";
    }
    ~LibraryFiles() override { fs::current_path(before_); }

    /// The module that the library is registered for, or the code.
    static std::string Stored() { return TestStore::Value(kKey); }

  private:
    static constexpr char kKey[] =
        R"(HKEY_CLASSES_ROOT\TypeLib\{E1D6EBCE-52C7-4E5A-81D6-68214BD2805B}\1.0\0\module)";
    const fs::path before_ = fs::current_path();
    TestStore store_;
};

TEST_F(LibraryFiles, NameTheModuleThatHasTheLibraryBesideIt) {
    const std::pair<const char*, const char*> rows[] = {
        {"Bare.so", "Bare.tlb"}, {"folder.d/NoExtension", "folder.tlb"},  // the last dot is the folder's
    };
    for (const auto& [module, library] : rows) {
        fs::copy_file(LARYNTH_TYPE_LIBRARY, library);
        EXPECT_EQ(Code(LarynthRegisterTypeLibrary(module)), "S_OK") << module << ": " << LarynthLastError();
        EXPECT_EQ(Stored(), module);
    }
}

TEST_F(LibraryFiles, WhatIsNoLibraryIsRefusedWithAReasonAndNothingIsWritten) {
    constexpr char kCannotLoad[] = "TYPE_E_CANTLOADLIBRARY", kInvalid[] = "TYPE_E_INVDATAREAD";
    const struct {
        const char *file, *registered, *reason;
    } rows[] = {
        {"Bare.so", kCannotLoad, "Bare.so: the module carries no type library; Bare.tlb: no such file"},
        {"Text.tlb", kCannotLoad, "Text.tlb: neither a type library nor a module: "},
        {"Broken.so", kInvalid,
         "Broken.so: the module carries no type library; Broken.tlb: not a valid type library: 4 bytes at "
         "offset 20 reach beyond the 4 that there are"},
    };
    for (const auto& row : rows) {
        ComPtr<ILarynthTypeLibrary> library;
        EXPECT_EQ(Code(LarynthLoadTypeLibrary(row.file, library.Put())), kCannotLoad) << row.file;
        EXPECT_EQ(Code(LarynthRegisterTypeLibrary(row.file)), row.registered) << row.file;
        EXPECT_THAT(LarynthLastError(), testing::StartsWith(row.reason));
    }
    EXPECT_EQ(Stored(), "REGDB_E_KEYMISSING");
    EXPECT_EQ(Code(LarynthLoadTypeLibrary(nullptr, nullptr)), "E_POINTER");
    EXPECT_EQ(Code(LarynthRegisterTypeLibrary(nullptr)), "E_POINTER");
    const Setting setting("LARYNTH_REGISTRY", "/dev/null/registry.db");
    EXPECT_EQ(Code(LarynthRegisterTypeLibrary(LARYNTH_MODULE)), "REGDB_E_WRITEREGDB");
}

}  // namespace
