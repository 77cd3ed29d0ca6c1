// SPDX-License-Identifier: MIT
// The modules are registered by the system's program while the tests run, and leave nothing behind.
#include <algorithm>
#include <cstdlib>
#include <gmock/gmock.h>
#include <regex>

#include <larynth/Larynth.h>

#include "tests/support/Code.h"
#include "tests/windows/SystemRegistry.h"

/// The system's runner of registry scripts.
struct LARYNTH_INTERFACE(IRegistrar, "44ec053b-400f-11d0-9dcd-00a0c90391d3") : IUnknown {
    virtual HRESULT LARYNTH_CALL AddReplacement(LPCOLESTR key, LPCOLESTR item) = 0;
    virtual HRESULT LARYNTH_CALL ClearReplacements() = 0;
    virtual HRESULT LARYNTH_CALL ResourceRegisterSz(LPCOLESTR file, LPCOLESTR id, LPCOLESTR type) = 0;
    virtual HRESULT LARYNTH_CALL ResourceUnregisterSz(LPCOLESTR file, LPCOLESTR id, LPCOLESTR type) = 0;
    virtual HRESULT LARYNTH_CALL FileRegister(LPCOLESTR file) = 0;
    virtual HRESULT LARYNTH_CALL FileUnregister(LPCOLESTR file) = 0;
    virtual HRESULT LARYNTH_CALL StringRegister(LPCOLESTR data) = 0;
    virtual HRESULT LARYNTH_CALL StringUnregister(LPCOLESTR data) = 0;
    virtual HRESULT LARYNTH_CALL ResourceRegister(LPCOLESTR file, UINT id, LPCOLESTR type) = 0;
    virtual HRESULT LARYNTH_CALL ResourceUnregister(LPCOLESTR file, UINT id, LPCOLESTR type) = 0;
};

namespace {

constexpr const char* kModules[] = {"Larynth.dll", "LarynthCompanion.dll"};
constexpr CLSID kLibrary = larynth::ParseGuid("e1d6ebce-52c7-4e5a-81d6-68214bd2805b");

std::string Folder() {
    std::string path(MAX_PATH, '\0');
    path.resize(GetModuleFileNameA(nullptr, path.data(), MAX_PATH));
    return path.substr(0, path.find_last_of('\\'));
}

void RunRegistration(const char* option) {
    for (const char* const module : kModules) {
        const std::string command =
            std::string("regsvr32 /s ") + option + " \"" + Folder() + '\\' + module + '"';
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
    }
}

/// What every system's store holds below the keys that it shares with others, LARYNTH_KEYS, in the words of
/// this one: its paths, and its own keys for a type library, which has a locale here. Wine notes in the
/// library's flags that it comes from a disk.
Keys ExpectedKeys() {
    const std::pair<const char*, const char*> rows[] = {
        {R"(FOLDER/(\w+)\.so)", "FOLDER\\$1.dll"},
        {R"(\\0\\module = )", "\\409\\win64 = "},
        {R"(\\1\.0\\0$)", "\\1.0\\409"},
        {R"(\\FLAGS = 0)", "\\FLAGS = 8"},
    };
    Keys keys;
    std::istringstream lines(ContentOf(LARYNTH_KEYS));
    for (std::string line; std::getline(lines, line);) {
        if (std::ranges::count(line, '{') == 0 && line.find("Larynth") == line.npos) continue;
        for (const auto& [pattern, words] : rows) line = std::regex_replace(line, std::regex(pattern), words);
        if (const std::size_t at = line.find("FOLDER"); at != line.npos) line.replace(at, 6, Folder());
        keys.insert(line);
    }
    return keys;
}

Keys Without(const Keys& keys, const Keys& others) {
    Keys left;
    std::ranges::set_difference(keys, others, std::inserter(left, left.end()));
    return left;
}

class Registered : public testing::Environment {
  public:
    void SetUp() override {
        RunRegistration("/u");  // should an earlier run have been ended
        UnRegisterTypeLib(kLibrary, 1, 0, 1033, SYS_WIN64);
        before = KeysNow();
        RunRegistration("");
    }
    void TearDown() override {
        RunRegistration("/u");
        EXPECT_EQ(Code(UnRegisterTypeLib(kLibrary, 1, 0, 1033, SYS_WIN64)), "S_OK");
        EXPECT_THAT(Without(KeysNow(), before), testing::IsEmpty());
        EXPECT_THAT(Without(before, KeysNow()), testing::IsEmpty());
    }
    inline static Keys before;
};
const testing::Environment* const registered = testing::AddGlobalTestEnvironment(new Registered);

constexpr CLSID kRegistrar = larynth::ParseGuid("44ec053a-400f-11d0-9dcd-00a0c90391d3");

using Deed = HRESULT (LARYNTH_CALL IRegistrar::*)(LPCOLESTR, UINT, LPCOLESTR);

/// Runs the scripts of all classes that registration registers.
void RunScripts(Deed deed) {
    constexpr UINT kNoClass[] = {108, 114, 126};  // in Larynth.dll
    for (const char* const module : kModules) {
        const std::string path = Folder() + '\\' + module;
        const std::wstring wide(path.begin(), path.end());
        const HMODULE file = LoadLibraryExA(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        ComPtr<IRegistrar> registrar;
        ASSERT_EQ(Code(registrar.Create(kRegistrar)), "S_OK");
        registrar->AddReplacement(L"MODULE", wide.c_str());
        for (UINT id = 101; id <= 130; ++id) {
            const bool isOther = module == kModules[0] && std::ranges::count(kNoClass, id) != 0;
            if (isOther || FindResourceA(file, MAKEINTRESOURCEA(id), "REGISTRY") == nullptr) continue;
            EXPECT_EQ(Code((registrar.Get()->*deed)(wide.c_str(), id, L"REGISTRY")), "S_OK") << module << id;
        }
        FreeLibrary(file);
    }
}

TEST(Registry, HoldsTheKeysOfEverySystemAndNoOther) {
    const Keys now = KeysNow(), found = Without(now, Registered::before);
    EXPECT_THAT(Without(ExpectedKeys(), now), testing::IsEmpty()) << "missing";
    EXPECT_THAT(Without(found, ExpectedKeys()), testing::IsEmpty()) << "too much";
    int classes = 0;
    for (const std::string& line : found) {
        if (line.find("\\InprocServer32 = ") == line.npos) continue;
        std::string model(16, '\0');
        DWORD size = 16;
        const std::string key = line.substr(18, line.find(" = ") - 18);
        RegGetValueA(HKEY_CLASSES_ROOT, key.c_str(), "ThreadingModel", RRF_RT_REG_SZ, nullptr, model.data(),
                     &size);
        EXPECT_STREQ(model.c_str(), "both") << line;
        ++classes;
    }
    EXPECT_EQ(classes, 16);
}

TEST(Registry, IsLeftTheSameByTheSystemsRunnerOfScripts) {
    const Keys all = KeysNow();
    RunRegistration("/u");
    const Keys none = KeysNow();
    EXPECT_EQ(all.size() - none.size(), 16U * 8);
    RunScripts(&IRegistrar::ResourceRegister);
    EXPECT_EQ(Without(KeysNow(), none), Without(all, none));
    RunScripts(&IRegistrar::ResourceUnregister);
    EXPECT_EQ(Without(KeysNow(), none), Keys());
    EXPECT_EQ(Without(none, KeysNow()), Keys());
    RunRegistration("");
    EXPECT_EQ(KeysNow(), all);
}

}  // namespace
