// SPDX-License-Identifier: MIT
#include <atomic>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>

#include "tests/runtime/SampleModule.h"
#include "tests/support/Code.h"
#include "tests/support/TestStore.h"

namespace {

using testing::HasSubstr;

class RegisteredClassesTest : public testing::Test {
  protected:
    static constexpr char kOne[] = "{8D3E5B0A-1F0C-4B62-9A37-50C1F6D2E411}";
    static constexpr char kTwo[] = "{8D3E5B0A-1F0C-4B62-9A37-50C1F6D2E412}";
    static constexpr char kCommon[] = "{8D3E5B0A-1F0C-4B62-9A37-50C1F6D2E420}";

    ~RegisteredClassesTest() override { CoFreeUnusedLibraries(); }

    /// As a module's registration does.
    static void Register(const std::string& classText, const char* module) {
        const auto view = TestStore::Open();
        const std::string key = "HKEY_CLASSES_ROOT\\CLSID\\" + classText + "\\InprocServer32";
        ASSERT_EQ(Code(view->Begin()), "S_OK");
        ASSERT_EQ(Code(view->CreateKey(key.c_str())), "S_OK");
        ASSERT_EQ(Code(view->SetValue(key.c_str(), "", module)), "S_OK");
        ASSERT_EQ(Code(view->Commit()), "S_OK");
    }

    static HRESULT Create(REFCLSID rclsid, LONG& supplier) {
        ComPtr<ISample> object;
        const HRESULT hr = object.Create(rclsid);
        supplier = object ? object->ModuleNumber() : 0;
        return hr;
    }

    TestStore store_;
};

}  // namespace

TEST_F(RegisteredClassesTest, AClassIsFoundThroughTheStoreAloneAlsoAfterItsModuleWasFreed) {
    LONG supplier = 0;
    EXPECT_EQ(Code(Create(CLSID_SampleOne, supplier)), "REGDB_E_CLASSNOTREG");
    Register(kOne, SAMPLE_MODULE_1);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Code(Create(CLSID_SampleOne, supplier)), "S_OK") << LarynthLastError();
        EXPECT_EQ(supplier, 1);
        EXPECT_EQ(Code(Create(CLSID_SampleCommon, supplier)), "S_OK") << "the module serves all it has";
        CoFreeUnusedLibraries();
        EXPECT_EQ(dlopen(SAMPLE_MODULE_1, RTLD_LAZY | RTLD_NOLOAD), nullptr);
    }
}

TEST_F(RegisteredClassesTest, ALoadedModuleComesBeforeTheStore) {
    Register(kCommon, SAMPLE_MODULE_2);
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    LONG supplier = 0;
    EXPECT_EQ(Code(Create(CLSID_SampleCommon, supplier)), "S_OK");
    EXPECT_EQ(supplier, 1);
}

TEST_F(RegisteredClassesTest, ARegisteredModuleThatIsOfNoUseIsAFailureOfItsOwnKind) {
    const struct {
        const char* module;
        const char* code;
        const char* reason;
    } rows[] = {
        {"/nowhere/at-all.so", "CO_E_DLLNOTFOUND", "/nowhere/at-all.so"},
        {__FILE__, "CO_E_DLLNOTFOUND", __FILE__},
        {SAMPLE_MODULE_3, "CO_E_ERRORINDLL", "DllCanUnloadNow"},
        {SAMPLE_MODULE_1, "REGDB_E_CLASSNOTREG", kTwo},  // does not know the class
    };
    for (const auto& row : rows) {
        Register(kTwo, row.module);
        LONG supplier = 0;
        EXPECT_EQ(Code(Create(CLSID_SampleTwo, supplier)), row.code);
        EXPECT_THAT(LarynthLastError(), HasSubstr(row.reason));
        EXPECT_THAT(LarynthLastError(), HasSubstr(kTwo));
    }
}

TEST_F(RegisteredClassesTest, ThreadsThatAskAtOnceAllFindTheClass) {
    Register(kOne, SAMPLE_MODULE_1);
    Register(kTwo, SAMPLE_MODULE_2);
    std::atomic<int> failures{0};
    for (int round = 0; round < 10; ++round) {
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&, i] {
                LONG supplier = 0;
                const HRESULT hr = Create(i % 2 == 0 ? CLSID_SampleOne : CLSID_SampleTwo, supplier);
                if (FAILED(hr) || supplier != i % 2 + 1) ++failures;
            });
        }
        for (std::thread& thread : threads) thread.join();
        CoFreeUnusedLibraries();
    }
    EXPECT_EQ(failures, 0);
}

TEST_F(RegisteredClassesTest, OnlyAModuleThatRegistersItselfIsRegistered) {
    ComPtr<ILarynthRegistry> described;
    for (const auto entry : {LarynthRegisterModule, LarynthUnregisterModule}) {
        EXPECT_EQ(Code(entry(nullptr)), "E_POINTER");
        EXPECT_EQ(Code(entry("/nowhere/at-all.so")), "CO_E_DLLNOTFOUND");
        EXPECT_EQ(Code(entry("nowhere.so")), "CO_E_DLLNOTFOUND");
        EXPECT_THAT(LarynthLastError(), HasSubstr("nowhere.so"));
        EXPECT_EQ(Code(entry(SAMPLE_MODULE_1)), "CO_E_ERRORINDLL");
        EXPECT_THAT(LarynthLastError(), HasSubstr("egisterServer"));
    }
    EXPECT_EQ(Code(LarynthDescribeModule(SAMPLE_MODULE_1, described.Put())), "CO_E_ERRORINDLL");
    EXPECT_EQ(described.Get(), nullptr);
    EXPECT_EQ(Code(LarynthDescribeModule(SAMPLE_MODULE_1, nullptr)), "E_POINTER");
}
