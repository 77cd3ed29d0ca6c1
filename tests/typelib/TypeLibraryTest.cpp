// SPDX-License-Identifier: MIT
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "tests/support/Code.h"
#include "tests/typelib/Listing.h"

namespace {

TEST(TypeLibrary, TheModuleCarriesTheLibrary) {
    LarynthLibraryInfo about{};
    ASSERT_EQ(Code(LoadLibraryOf(LARYNTH_MODULE)->GetLibrary(&about)), "S_OK");
    EXPECT_EQ(about.MajorVersion, 1);
    EXPECT_EQ(about.MinorVersion, 0);
    EXPECT_EQ(about.Locale, 1033);
    EXPECT_EQ(about.TypesCount, 45);
    EXPECT_EQ(IdText(about.Id), "e1d6ebce-52c7-4e5a-81d6-68214bd2805b");
}

TEST(TypeLibrary, AFileHoldsTheSameAsTheModule) {
    const ComPtr<ILarynthTypeLibrary> fromModule = LoadLibraryOf(LARYNTH_MODULE);
    const ComPtr<ILarynthTypeLibrary> fromFile = LoadLibraryOf(LARYNTH_TYPE_LIBRARY);
    EXPECT_EQ(Listing(*fromFile.Get()), Listing(*fromModule.Get()));
}

// The file is the record of what was released. A new interface appends to it; a line that is there never
// changes.
TEST(TypeLibrary, ReleasedLinesStand) {
    std::ifstream file(LARYNTH_LISTING);
    const std::string released(std::istreambuf_iterator<char>(file), {});
    ASSERT_FALSE(released.empty());
    EXPECT_EQ(Listing(*LoadLibraryOf(LARYNTH_MODULE).Get()), released);
}

TEST(TypeLibrary, TextsLiveAsLongAsTheLibrary) {
    LarynthTypeInfo type{};
    LarynthFunctionInfo function{};
    ComPtr<IUnknown> identity;
    {
        const ComPtr<ILarynthTypeLibrary> library = LoadLibraryOf(LARYNTH_MODULE);
        ASSERT_EQ(Code(library->GetType(0, &type)), "S_OK");
        ASSERT_EQ(Code(library->GetFunction(0, 0, &function)), "S_OK");
        identity.Query(library.Get());
    }
    EXPECT_STREQ(type.Name, "ILarynthParams");
    EXPECT_STREQ(function.Name, "SetSampleFreq");
    EXPECT_TRUE(ComPtr<ILarynthTypeLibrary>().TryQuery(identity.Get()));
    EXPECT_FALSE(ComPtr<IClassFactory>().TryQuery(identity.Get()));
}

TEST(TypeLibrary, AnIndexOutsideAndABadPointerChangeNothing) {
    const ComPtr<ILarynthTypeLibrary> library = LoadLibraryOf(LARYNTH_MODULE);
    constexpr int kParams = 0;  // ILarynthParams, four methods of one parameter
    LarynthTypeInfo type{};
    LarynthFunctionInfo function{};
    LarynthParameterInfo parameter{};
    LarynthImplementedInfo implemented{};
    for (const int outside : {-1, 45}) EXPECT_EQ(Code(library->GetType(outside, &type)), "E_FAIL") << outside;
    for (const int outside : {-1, 4}) {
        EXPECT_EQ(Code(library->GetFunction(kParams, outside, &function)), "E_FAIL") << outside;
        EXPECT_EQ(Code(library->GetParameter(kParams, outside, 0, &parameter)), "E_FAIL") << outside;
        EXPECT_EQ(Code(library->GetParameter(kParams, 0, outside, &parameter)), "E_FAIL") << outside;
        EXPECT_EQ(Code(library->GetImplemented(kParams, outside, &implemented)), "E_FAIL") << outside;
    }
    EXPECT_EQ(Code(library->GetImplemented(45, 0, &implemented)), "E_FAIL");
    EXPECT_EQ(type.Name, nullptr);
    EXPECT_EQ(function.Name, nullptr);
    EXPECT_EQ(parameter.Name, nullptr);
    EXPECT_EQ(implemented.Name, nullptr);
    EXPECT_EQ(Code(library->GetLibrary(nullptr)), "E_POINTER");
    EXPECT_EQ(Code(library->GetType(0, nullptr)), "E_POINTER");
    EXPECT_EQ(Code(library->GetFunction(kParams, 0, nullptr)), "E_POINTER");
    EXPECT_EQ(Code(library->GetParameter(kParams, 0, 0, nullptr)), "E_POINTER");
    EXPECT_EQ(Code(library->GetImplemented(0, 0, nullptr)), "E_POINTER");
}

/// A file of the build folder that goes with the test.
class ScratchFile {
  public:
    ScratchFile(const std::string& name, const std::string& bytes)
        : path_(std::filesystem::current_path() / name) {
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    ~ScratchFile() { std::filesystem::remove(path_); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    std::string Path() const { return path_.string(); }

  private:
    std::filesystem::path path_;
};

TEST(TypeLibrary, WhatIsNoLibraryIsRefusedWithAReason) {
    const ScratchFile empty("empty.tlb", "");
    const ScratchFile text("text.tlb", "MSF is not enough");
    const ScratchFile signature("signature.tlb", "MSFT");
    const struct {
        std::string File;
        HRESULT Result;
        const char* Reason;
    } rows[] = {
        {"/nowhere/LarynthLib.tlb", TYPE_E_CANTLOADLIBRARY, "no such file"},
        {std::filesystem::current_path(), TYPE_E_CANTLOADLIBRARY, "no such file"},
        {empty.Path(), TYPE_E_CANTLOADLIBRARY, "neither a type library nor a module"},
        {text.Path(), TYPE_E_CANTLOADLIBRARY, "neither a type library nor a module"},
        {LARYNTH_COMPANION_MODULE, TYPE_E_CANTLOADLIBRARY, "carries no type library"},
        {signature.Path(), TYPE_E_INVDATAREAD, "not a valid type library"},
    };
    for (const auto& row : rows) {
        ILarynthTypeLibrary* library = reinterpret_cast<ILarynthTypeLibrary*>(1);
        EXPECT_EQ(Code(LarynthLoadTypeLibrary(row.File.c_str(), &library)), Code(row.Result)) << row.File;
        EXPECT_EQ(library, nullptr) << row.File;
        const std::string reason = LarynthLastError();
        EXPECT_TRUE(reason.starts_with(row.File) && reason.find(row.Reason) != std::string::npos) << reason;
    }
    ComPtr<ILarynthTypeLibrary> library;
    EXPECT_EQ(Code(LarynthLoadTypeLibrary(nullptr, library.Put())), "E_POINTER");
    EXPECT_EQ(Code(LarynthLoadTypeLibrary(LARYNTH_MODULE, nullptr)), "E_POINTER");
}

}  // namespace
