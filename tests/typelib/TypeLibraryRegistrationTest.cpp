// SPDX-License-Identifier: MIT
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/Code.h"
#include "tests/typelib/Listing.h"

namespace {

namespace fs = std::filesystem;

/// Works in a folder and with a store of its own, so that modules are named by short relative paths.
class TypeLibraryRegistration : public testing::Test {
  protected:
    TypeLibraryRegistration() {
        fs::create_directory(folder_);
        fs::current_path(folder_);
        setenv("LARYNTH_REGISTRY", (folder_ / "registry.db").c_str(), 1);
    }
    ~TypeLibraryRegistration() override {
        fs::current_path(folder_.parent_path());
        fs::remove_all(folder_);
    }

    /// A module that carries no library.
    static void MakeBareModule(const fs::path& path) {
        if (path.has_parent_path()) fs::create_directories(path.parent_path());
        fs::create_symlink(LARYNTH_COMPANION_MODULE, path);
    }

    /// The default value of a key below the library's, or the code.
    static std::string Stored(const std::string& below) {
        const std::string key =
            "HKEY_CLASSES_ROOT\\TypeLib\\{E1D6EBCE-52C7-4E5A-81D6-68214BD2805B}\\" + below;
        ComPtr<ILarynthRegistry> registry;
        EXPECT_EQ(Code(LarynthOpenRegistry(registry.Put())), "S_OK");
        LPCSTR value = nullptr;
        const HRESULT hr = registry->GetValue(key.c_str(), "", &value);
        return SUCCEEDED(hr) ? value : Code(hr);
    }

  private:
    const fs::path folder_ = fs::current_path() / ("typelib-" + std::to_string(getpid()));
};

TEST_F(TypeLibraryRegistration, NamesTheModuleThatCarriesTheLibrary) {
    ASSERT_EQ(Code(LarynthRegisterTypeLibrary(LARYNTH_MODULE)), "S_OK") << LarynthLastError();
    EXPECT_EQ(Stored("1.0"), "Larynth 1.0 Type Library");
    EXPECT_EQ(Stored("1.0\\FLAGS"), "0");
    EXPECT_EQ(Stored("1.0\\0\\module"), LARYNTH_MODULE);
    EXPECT_EQ(Stored("1.0\\HELPDIR"), fs::path(LARYNTH_MODULE).parent_path().string());
}

TEST_F(TypeLibraryRegistration, AFileBesideTheModuleServesAsWell) {
    const struct {
        const char* Module;
        const char* Library;
    } rows[] = {
        {"Bare.so", "Bare.tlb"},
        {"Two.parts.so", "Two.parts.tlb"},
        {"NoExtension", "NoExtension.tlb"},
        {"folder.d/NoExtension", "folder.tlb"},  // the last dot is the folder's
    };
    for (const auto& row : rows) {
        MakeBareModule(row.Module);
        fs::copy_file(LARYNTH_TYPE_LIBRARY, row.Library);
        EXPECT_EQ(Code(LarynthRegisterTypeLibrary(row.Module)), "S_OK")
            << row.Module << ": " << LarynthLastError();
        EXPECT_EQ(Stored("1.0\\0\\module"), row.Module);
    }
}

TEST_F(TypeLibraryRegistration, WritesNothingWithoutALibrary) {
    MakeBareModule("Alone.so");
    MakeBareModule("Broken.so");
    std::ofstream("Broken.tlb") << "MSFT";
    const struct {
        const char* Module;
        HRESULT Result;
        const char* Reason;
    } rows[] = {
        {"Alone.so", TYPE_E_CANTLOADLIBRARY,
         "Alone.so: the module carries no type library; Alone.tlb: no such file"},
        {"Missing.so", TYPE_E_CANTLOADLIBRARY, "Missing.so: no such file; Missing.tlb: no such file"},
        {"Broken.so", TYPE_E_INVDATAREAD,
         "Broken.so: the module carries no type library; Broken.tlb: not a valid type library: 4 bytes at "
         "offset 20 "
         "reach beyond the 4 that there are"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Code(LarynthRegisterTypeLibrary(row.Module)), Code(row.Result)) << row.Module;
        EXPECT_STREQ(LarynthLastError(), row.Reason);
    }
    EXPECT_EQ(Code(LarynthRegisterTypeLibrary(nullptr)), "E_POINTER");
    EXPECT_EQ(Stored("1.0"), "REGDB_E_KEYMISSING");
}

TEST_F(TypeLibraryRegistration, AStoreThatCannotBeWrittenIsReported) {
    setenv("LARYNTH_REGISTRY", "/dev/null/registry.db", 1);
    EXPECT_EQ(Code(LarynthRegisterTypeLibrary(LARYNTH_MODULE)), "REGDB_E_WRITEREGDB") << LarynthLastError();
}

}  // namespace
