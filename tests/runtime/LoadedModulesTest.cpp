// SPDX-License-Identifier: MIT
// Classes of modules that are loaded, and of modules that the store names.
#include <atomic>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <shared_mutex>
#include <thread>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Runtime.h>

#include "tests/runtime/SampleModule.h"
#include "tests/support/Code.h"
#include "tests/support/InThreads.h"
#include "tests/support/TestStore.h"

namespace {

using testing::HasSubstr;

/// The number of the module that an object of the class comes from, or the code.
std::string SupplierOf(REFCLSID rclsid) {
    ComPtr<ISample> object;
    const HRESULT hr = object.Create(rclsid);
    return object ? std::to_string(object->ModuleNumber()) : Code(hr);
}
constexpr char kNobody[] = "REGDB_E_CLASSNOTREG";

/// A library that the host itself has opened.
struct Close {
    void operator()(void* handle) const { dlclose(handle); }
};
using HostsOwn = std::unique_ptr<void, Close>;
HostsOwn Opened(const char* path) { return HostsOwn(dlopen(path, RTLD_NOW | RTLD_LOCAL)); }

bool InMemory(const char* path) { return HostsOwn(dlopen(path, RTLD_LAZY | RTLD_NOLOAD)) != nullptr; }

SampleControl& ControlOne() {
    const HostsOwn module = Opened(SAMPLE_MODULE_1);
    return *reinterpret_cast<ControlSampleFunction>(dlsym(module.get(), "ControlSample"))();
}

class LoadedModules : public testing::Test {
  protected:
    ~LoadedModules() override {
        CoFreeUnusedLibraries();
        EXPECT_FALSE(InMemory(SAMPLE_MODULE_1));
        EXPECT_FALSE(InMemory(SAMPLE_MODULE_2));
    }

    /// As a module's registration does.
    static void Register(const std::string& classText, const char* module) {
        TestStore::Write("HKEY_CLASSES_ROOT\\CLSID\\" + classText + "\\InprocServer32", module);
    }
    static constexpr char kOne[] = "{8D3E5B0A-1F0C-4B62-9A37-50C1F6D2E411}";
    static constexpr char kTwo[] = "{8D3E5B0A-1F0C-4B62-9A37-50C1F6D2E412}";

    TestStore store_;
};

ComPtr<IClassFactory> takenMeanwhile;
std::vector<std::string> overwriting;  // what memory was given back meanwhile

}  // namespace

TEST_F(LoadedModules, AreNotFreedWhileOrAfterTheyAreAskedForAClassObject) {
    for (int i = 0; i < 2; ++i) ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    const auto take = [] {
        CoGetClassObject(CLSID_SampleOne, CLSCTX_INPROC_SERVER, nullptr, takenMeanwhile.Id(),
                         takenMeanwhile.PutVoid());
    };
    ControlOne().beforeClassObject = [] { CoFreeUnusedLibraries(); };
    take();
    ASSERT_TRUE(InMemory(SAMPLE_MODULE_1));
    ControlOne().beforeClassObject = nullptr;
    takenMeanwhile.Release();

    ControlOne().afterUnloadAnswer = take;  // it has already agreed to go
    CoFreeUnusedLibraries();
    ASSERT_TRUE(InMemory(SAMPLE_MODULE_1));
    ControlOne().afterUnloadAnswer = nullptr;
    takenMeanwhile.Release();
}

TEST_F(LoadedModules, MayComeWhileTheyAreAsked) {
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_2)), "S_OK");
    ControlOne().beforeClassObject = [] {
        ControlOne().beforeClassObject = nullptr;
        const HostsOwn library = Opened(SAMPLE_DEPENDENT);
        EXPECT_EQ(SupplierOf(CLSID_SampleThree), kNobody);  // looks at all that is there now
        for (std::size_t size = 32; size < 256; ++size) overwriting.emplace_back(size, 'x');
    };
    EXPECT_EQ(SupplierOf(CLSID_SampleTwo), "2");
    overwriting.clear();
}

TEST_F(LoadedModules, AreAskedInTheOrderOfLoadingWhoeverLoadedThem) {
    {
        const HostsOwn library = Opened(SAMPLE_DEPENDENT);
        EXPECT_EQ(SupplierOf(CLSID_SampleTwo), "2") << "came in as a dependency";
    }
    CoFreeUnusedLibraries();
    HostsOwn hosts = Opened(SAMPLE_MODULE_1);
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_2)), "S_OK");
    EXPECT_EQ(SupplierOf(CLSID_SampleCommon), "1");
    EXPECT_EQ(SupplierOf(CLSID_SampleTwo), "2");
    ComPtr<ISample> two;
    ASSERT_EQ(Code(two.Create(CLSID_SampleTwo)), "S_OK");
    CoFreeUnusedLibraries();  // lets go of the first, which the host still has
    EXPECT_EQ(SupplierOf(CLSID_SampleCommon), "1");
    hosts.reset();
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), "1") << "the runtime holds it";
    CoFreeUnusedLibraries();
    EXPECT_EQ(SupplierOf(CLSID_SampleCommon), "2");
    const HostsOwn later = Opened(SAMPLE_DEPENDENT), evenLater = Opened(SAMPLE_MODULE_1);
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), "1");
    EXPECT_EQ(SupplierOf(CLSID_SampleCommon), "2");
}

TEST_F(LoadedModules, AreFoundThroughTheStoreAfterThoseThatAreLoaded) {
    Register(kOne, SAMPLE_MODULE_1);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(SupplierOf(CLSID_SampleOne), "1") << LarynthLastError();
        EXPECT_EQ(SupplierOf(CLSID_SampleCommon), "1") << "the module serves all it has";
        CoFreeUnusedLibraries();
        EXPECT_FALSE(InMemory(SAMPLE_MODULE_1));
    }
    Register(kOne, SAMPLE_MODULE_2);
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), "1");
}

TEST_F(LoadedModules, WhatIsNoModuleIsRefusedAndLeavesMemory) {
    EXPECT_EQ(Code(LarynthLoadModule(nullptr)), "E_POINTER");
    const struct {
        const char *file, *code, *reason;
    } rows[] = {{"/nowhere/at-all.so", "CO_E_DLLNOTFOUND", "/nowhere/at-all.so"},
                {"libresolv.so.2", "CO_E_DLLNOTFOUND", "libresolv.so.2: "},  // the loader would find it
                {SAMPLE_DEPENDENT, "CO_E_ERRORINDLL", "DllGetClassObject"},  // its dependency has one
                {SAMPLE_MODULE_3, "CO_E_ERRORINDLL", "DllCanUnloadNow"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Code(LarynthLoadModule(row.file)), row.code);
        EXPECT_THAT(LarynthLastError(), HasSubstr(row.reason));
        EXPECT_FALSE(InMemory(row.file));
        Register(kTwo, row.file);
        EXPECT_EQ(SupplierOf(CLSID_SampleTwo), row.code);
        EXPECT_THAT(LarynthLastError(), HasSubstr(row.reason));
    }
    Register(kTwo, SAMPLE_MODULE_1);
    EXPECT_EQ(SupplierOf(CLSID_SampleTwo), kNobody) << "the module does not know the class";
    EXPECT_EQ(Code(LarynthRegisterModule("nowhere.so")), "CO_E_DLLNOTFOUND");
    EXPECT_EQ(Code(LarynthUnregisterModule(SAMPLE_MODULE_1)), "CO_E_ERRORINDLL");
    EXPECT_THAT(LarynthLastError(), HasSubstr("DllUnregisterServer"));
}

TEST_F(LoadedModules, ComeAndGoWhileThreadsCreate) {
    Register(kOne, SAMPLE_MODULE_1);
    Register(kTwo, SAMPLE_MODULE_2);
    std::shared_mutex releasing;  // nothing is freed while a thread is still inside its last release
    std::atomic<bool> done{false};
    std::thread freer([&] {
        while (!done) {
            const std::unique_lock lock(releasing);
            CoFreeUnusedLibraries();
        }
    });
    InThreads(4, [&](int thread) {
        const LONG number = thread % 2 + 1;
        for (int i = 0; i < 200; ++i) {
            ComPtr<ISample> object;
            ASSERT_EQ(Code(object.Create(number == 1 ? CLSID_SampleOne : CLSID_SampleTwo)), "S_OK");
            EXPECT_EQ(object->ModuleNumber(), number);
            DWORD offered = 0;  // the table of the host's own classes changes as well
            CoRegisterClassObject(IID_ISample, object.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                  &offered);
            EXPECT_EQ(Code(CoRevokeClassObject(offered)), "S_OK");
            const std::shared_lock lock(releasing);
            object.Release();
        }
    });
    done = true;
    freer.join();
}
