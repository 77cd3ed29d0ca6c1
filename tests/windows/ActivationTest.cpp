// SPDX-License-Identifier: MIT
// The registered modules under the system's own component runtime.
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include <larynth/Larynth.h>

#include "tests/support/Code.h"
#include "tests/support/Partners.h"

namespace {

using larynth::test::FakeVoicingSource;
using larynth::test::Script;

constexpr char kServer[] = "CLSID\\{7856881E-0461-4F9D-8693-3030B63798FA}\\InprocServer32";

/// Whether what would be called lies in the module: no proxy does.
bool IsDirect(IUnknown* object) {
    HMODULE home = nullptr;
    constexpr DWORD kNoReference =
        GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS;
    GetModuleHandleExA(kNoReference, *reinterpret_cast<LPCSTR*>(object), &home);
    return home != nullptr && home == GetModuleHandleA("Larynth.dll");
}

/// The threading model under which the synthesizer is registered, as long as it lives.
class ThreadingModel {
  public:
    explicit ThreadingModel(const std::string& model) { Set(model); }
    ~ThreadingModel() { Set("both"); }
    ThreadingModel(const ThreadingModel&) = delete;
    ThreadingModel& operator=(const ThreadingModel&) = delete;

  private:
    static void Set(const std::string& model) {
        EXPECT_EQ(RegSetKeyValueA(HKEY_CLASSES_ROOT, kServer, "ThreadingModel", REG_SZ, model.c_str(),
                                  static_cast<DWORD>(model.size() + 1)),
                  ERROR_SUCCESS);
    }
};

// By itself: Wine keeps an object that it made in another apartment.
TEST(Apartments, ObjectsAreCalledDirectlyFromEveryOne) {
    const struct {
        const char* model;
        DWORD apartment;
        bool direct;
    } rows[] = {
        {"both", COINIT_APARTMENTTHREADED, true},      {"both", COINIT_MULTITHREADED, true},
        {"Apartment", COINIT_APARTMENTTHREADED, true}, {"Apartment", COINIT_MULTITHREADED, false},
        {"Free", COINIT_APARTMENTTHREADED, false},     {"Free", COINIT_MULTITHREADED, true},
    };
    for (const auto& row : rows) {
        const ThreadingModel model(row.model);
        std::jthread([&] {
            ASSERT_EQ(Code(CoInitializeEx(nullptr, row.apartment)), "S_OK");
            ComPtr<IUnknown> object;
            EXPECT_EQ(Code(object.Create(CLSID_Larynth)), "S_OK") << row.model << row.apartment;
            EXPECT_EQ(object && IsDirect(object.Get()), row.direct) << row.model << row.apartment;
            object.Release();
            CoUninitialize();
        });
    }
}

TEST(Activation, FindsClassesByNameAndUnloadsWhatIsUnused) {
    // A thread that has ended keeps nothing in memory.
    std::jthread([] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        for (const wchar_t* const name : {L"Larynth.Larynth", L"Larynth.Larynth.1"}) {
            CLSID id;
            EXPECT_EQ(Code(CLSIDFromProgID(name, &id)), "S_OK");
            EXPECT_TRUE(id == CLSID_Larynth);
        }
        ComPtr<IClassFactory> factory;
        ComPtr<IUnknown> object;
        ASSERT_EQ(Code(CoGetClassObject(CLSID_Larynth, CLSCTX_INPROC_SERVER, nullptr, factory.Id(),
                                        factory.PutVoid())),
                  "S_OK");
        ASSERT_EQ(Code(factory->CreateInstance(nullptr, object.Id(), object.PutVoid())), "S_OK");
        const auto inMemory = [] {
            CoFreeUnusedLibrariesEx(0, 0);
            CoFreeUnusedLibrariesEx(0, 0);  // the first time it is noted that nothing is used
            return GetModuleHandleA("Larynth.dll") != nullptr;
        };
        factory.Release();
        EXPECT_TRUE(inMemory());
        object.Release();
        EXPECT_FALSE(inMemory());
        CoUninitialize();
    }).join();
    EXPECT_NE(GetModuleHandleA("LarynthRuntime.dll"), nullptr) << "the state of the noise stays";
    EXPECT_EQ(Code(ComPtr<IUnknown>().Create(CLSID_Larynth)), "S_OK") << "and loads it again";
}

TEST(Activation, ExceptionsOfPartnersEndAtTheBoundary) {
    for (const char* const call : {"voicing.SetParams", "voicing"}) {
        Script script;
        FakeVoicingSource source(script);
        ComPtr<IACLIOProcess> process;
        ComPtr<ILarynthStruct> structure;
        ComPtr<ILarynthParams> packet;
        ComPtr<IUnknown> output;
        ASSERT_EQ(Code(process.Create(CLSID_Larynth)), "S_OK");
        ASSERT_EQ(Code(packet.Create(CLSID_LarynthParams)), "S_OK");
        process->Initialize(nullptr, GUID_NULL);
        structure.Query(process.Get());
        EXPECT_EQ(Code(structure->SetVoicingSource(&source, IID_ITTSVoicingSource)), "S_OK");
        packet->SetFrameLen(10);
        script.Throw(call);
        EXPECT_EQ(Code(process->Calculate(packet.Get(), GUID_NULL, GUID_NULL, output.Put())), "E_FAIL")
            << call;
        script.Throw("QueryInterface");
        EXPECT_EQ(Code(structure->SetVoicingSource(&source, IID_ITTSVoicingSource)), "E_FAIL");
        script.Throw("");
        EXPECT_EQ(Code(structure->SetVoicingSource(&source, IID_ITTSVoicingSource)), "S_OK");
        EXPECT_EQ(Code(process->Calculate(packet.Get(), GUID_NULL, GUID_NULL, output.Put())), "S_OK") << call;
    }
}

TEST(MemoryProbes, OfTheSystemAreExact) {
    SYSTEM_INFO system;
    GetSystemInfo(&system);
    const std::size_t page = system.dwPageSize;
    auto* const memory =
        static_cast<char*>(VirtualAlloc(nullptr, 3 * page, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    DWORD before = 0;
    VirtualProtect(memory + page, page, PAGE_READONLY, &before);
    VirtualProtect(memory + 2 * page, page, PAGE_NOACCESS, &before);
    std::fill_n(memory, page, char{7});
    const struct {
        char* start;
        std::size_t size;
        bool readable, writable;
    } rows[] = {
        {nullptr, 1, false, false},           {nullptr, 0, true, true},
        {memory, page, true, true},           {memory + page - 1, 2, true, false},
        {memory + page, page, true, false},   {memory + 2 * page - 1, 2, false, false},
        {memory + 2 * page, 1, false, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(IsBadReadPtr(row.start, row.size) == FALSE, row.readable)
            << row.start - memory << ' ' << row.size;
        EXPECT_EQ(IsBadWritePtr(row.start, row.size) == FALSE, row.writable)
            << row.start - memory << ' ' << row.size;
    }
    EXPECT_EQ(std::count(memory, memory + page, 7), static_cast<long long>(page)) << "nothing is changed";
    VirtualFree(memory, 0, MEM_RELEASE);
}

}  // namespace
