// SPDX-License-Identifier: MIT
#include <atomic>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <shared_mutex>
#include <thread>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Runtime.h>

#include "tests/runtime/SampleModule.h"
#include "tests/support/Code.h"

namespace {

using testing::HasSubstr;

/// The number of the module that an object of the class comes from, 0 when nobody offers the class.
LONG SupplierOf(REFCLSID rclsid) {
    ComPtr<ISample> object;
    const HRESULT hr = object.Create(rclsid);
    EXPECT_EQ(Code(hr), object ? "S_OK" : "REGDB_E_CLASSNOTREG");
    return object ? object->ModuleNumber() : 0;
}

bool InMemory(const char* path) {
    void* const handle = dlopen(path, RTLD_LAZY | RTLD_NOLOAD);
    if (handle != nullptr) dlclose(handle);
    return handle != nullptr;
}

/// A library that the host itself has opened.
class HostsOwn {
  public:
    explicit HostsOwn(const char* path) : handle_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
        EXPECT_NE(handle_, nullptr) << dlerror();
    }
    ~HostsOwn() { Close(); }
    HostsOwn(const HostsOwn&) = delete;
    HostsOwn& operator=(const HostsOwn&) = delete;

    void Close() {
        if (handle_ != nullptr) dlclose(handle_);
        handle_ = nullptr;
    }
    SampleControl& Control() const {
        return *reinterpret_cast<ControlSampleFunction>(dlsym(handle_, "ControlSample"))();
    }

  private:
    void* handle_;
};

class LoadedModulesTest : public testing::Test {
  protected:
    ~LoadedModulesTest() override {
        CoFreeUnusedLibraries();
        EXPECT_FALSE(InMemory(SAMPLE_MODULE_1));
        EXPECT_FALSE(InMemory(SAMPLE_MODULE_2));
    }
};

}  // namespace

TEST_F(LoadedModulesTest, AModuleServesItsClassesUntilItIsFreed) {
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), 0);
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), 1);
    EXPECT_EQ(SupplierOf(CLSID_SampleTwo), 0);
    CoFreeUnusedLibraries();
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), 0);
}

TEST_F(LoadedModulesTest, AModuleIsFreedOnlyWhenItAgreesAndIsToldOfIt) {
    std::atomic<int> unloads{0};
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    HostsOwn module(SAMPLE_MODULE_1);
    module.Control().unloads = &unloads;
    module.Close();

    ComPtr<ISample> object;
    ASSERT_EQ(Code(object.Create(CLSID_SampleOne)), "S_OK");
    CoFreeUnusedLibraries();
    EXPECT_EQ(object->ModuleNumber(), 1);
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), 1);
    object.Release();
    EXPECT_EQ(unloads, 0);
    CoFreeUnusedLibraries();
    EXPECT_EQ(unloads, 1);
}

TEST_F(LoadedModulesTest, AModuleIsNotFreedWhileItIsAskedForAClassObject) {
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    HostsOwn module(SAMPLE_MODULE_1);
    module.Control().beforeClassObject = [] { CoFreeUnusedLibraries(); };
    module.Close();
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(Code(CoGetClassObject(CLSID_SampleOne, CLSCTX_INPROC_SERVER, nullptr, factory.Id(),
                                    factory.PutVoid())),
              "S_OK");
    ASSERT_TRUE(InMemory(SAMPLE_MODULE_1));
    HostsOwn(SAMPLE_MODULE_1).Control().beforeClassObject = nullptr;
}

namespace {
ComPtr<IClassFactory> takenMeanwhile;
}

TEST_F(LoadedModulesTest, AModuleIsNotFreedWhenItGaveAClassObjectAfterItAgreed) {
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    HostsOwn module(SAMPLE_MODULE_1);
    module.Control().afterUnloadAnswer = [] {
        CoGetClassObject(CLSID_SampleOne, CLSCTX_INPROC_SERVER, nullptr, takenMeanwhile.Id(),
                         takenMeanwhile.PutVoid());
    };
    module.Close();
    CoFreeUnusedLibraries();
    ASSERT_TRUE(InMemory(SAMPLE_MODULE_1));
    HostsOwn(SAMPLE_MODULE_1).Control().afterUnloadAnswer = nullptr;
    takenMeanwhile.Release();
}

TEST_F(LoadedModulesTest, AModuleThatTheHostOpenedIsFoundAndHeld) {
    HostsOwn module(SAMPLE_MODULE_1);
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), 1);
    CoFreeUnusedLibraries();
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), 1);  // the host still has it, so it is found again
    module.Close();
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), 1);  // now the runtime alone has it
}

TEST_F(LoadedModulesTest, TheModuleLoadedFirstIsAskedFirst) {
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_2)), "S_OK");
    EXPECT_EQ(SupplierOf(CLSID_SampleCommon), 2);
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    EXPECT_EQ(SupplierOf(CLSID_SampleCommon), 2);
    EXPECT_EQ(SupplierOf(CLSID_SampleOne), 1);
}

TEST_F(LoadedModulesTest, WhatIsNoModuleIsRefusedAndLeavesMemory) {
    EXPECT_EQ(Code(LarynthLoadModule(nullptr)), "E_POINTER");
    EXPECT_EQ(Code(LarynthLoadModule("/nowhere/at-all.so")), "CO_E_DLLNOTFOUND");
    EXPECT_THAT(LarynthLastError(), HasSubstr("/nowhere/at-all.so"));
    EXPECT_EQ(Code(LarynthLoadModule(__FILE__)), "CO_E_DLLNOTFOUND");

    // Its dependency has the entry points, but it has none itself.
    EXPECT_EQ(Code(LarynthLoadModule(SAMPLE_DEPENDENT)), "CO_E_ERRORINDLL");
    EXPECT_THAT(LarynthLastError(), HasSubstr("DllGetClassObject"));
    EXPECT_FALSE(InMemory(SAMPLE_DEPENDENT));

    EXPECT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_3)), "CO_E_ERRORINDLL");
    EXPECT_THAT(LarynthLastError(), HasSubstr("DllCanUnloadNow"));
    EXPECT_FALSE(InMemory(SAMPLE_MODULE_3));
}

TEST_F(LoadedModulesTest, AModuleThatCameInAsADependencyIsFound) {
    const HostsOwn library(SAMPLE_DEPENDENT);
    EXPECT_EQ(SupplierOf(CLSID_SampleTwo), 2);
}

TEST_F(LoadedModulesTest, ThreadsCreateWhileModulesComeAndGo) {
    std::shared_mutex
        releasing;  // a module must not be freed while a thread is still inside its last release
    std::atomic<bool> done{false};
    std::atomic<int> created{0};
    std::thread freer([&] {
        while (!done) {
            const std::unique_lock lock(releasing);
            CoFreeUnusedLibraries();
        }
    });
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 300; ++i) {
                EXPECT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
                ComPtr<ISample> object;
                const HRESULT hr = object.Create(CLSID_SampleOne);
                if (hr == REGDB_E_CLASSNOTREG) continue;  // freed in between
                ASSERT_EQ(Code(hr), "S_OK");
                EXPECT_EQ(object->ModuleNumber(), 1);
                ++created;
                const std::shared_lock lock(releasing);
                object.Release();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    done = true;
    freer.join();
    EXPECT_GT(created, 0);
}
