// SPDX-License-Identifier: MIT
#pragma once

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <larynth/Larynth.h>

#include "tests/support/Code.h"

/// A component module of the build, loaded through the runtime; its entry points for direct calls.
class ModuleUnderTest {
  public:
    using GetClassObjectEntry = HRESULT(REFCLSID rclsid, REFIID riid, void** ppv);
    using CanUnloadEntry = HRESULT();

    explicit ModuleUnderTest(const char* path) {
        EXPECT_EQ(Code(LarynthLoadModule(path)), Code(S_OK)) << LarynthLastError();
        handle_ = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
        EXPECT_NE(handle_, nullptr) << path;
        getClassObject_ = reinterpret_cast<GetClassObjectEntry*>(dlsym(handle_, "DllGetClassObject"));
        canUnload_ = reinterpret_cast<CanUnloadEntry*>(dlsym(handle_, "DllCanUnloadNow"));
    }
    ~ModuleUnderTest() { dlclose(handle_); }
    ModuleUnderTest(const ModuleUnderTest&) = delete;
    ModuleUnderTest& operator=(const ModuleUnderTest&) = delete;

    HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) const {
        return getClassObject_(rclsid, riid, ppv);
    }
    HRESULT CanUnload() const { return canUnload_(); }

    /// True while the file at `path` is in the process's memory.
    static bool IsInMemory(const char* path) {
        void* handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
        if (handle != nullptr) dlclose(handle);
        return handle != nullptr;
    }

  private:
    void* handle_ = nullptr;
    GetClassObjectEntry* getClassObject_ = nullptr;
    CanUnloadEntry* canUnload_ = nullptr;
};
