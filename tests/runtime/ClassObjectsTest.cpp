// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Runtime.h>

#include "tests/runtime/SampleModule.h"
#include "tests/support/Code.h"

namespace {

/// A class object of the test's own, and the object that it gives out.
class HostFactory final : public IClassFactory {
  public:
    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
        if (revokeWhenAsked != 0) CoRevokeClassObject(revokeWhenAsked);
        *ppv = nullptr;
        if (!(riid == IID_IUnknown) && !(riid == IID_IClassFactory)) return E_NOINTERFACE;
        *ppv = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }
    ULONG LARYNTH_CALL AddRef() override { return ++references; }
    ULONG LARYNTH_CALL Release() override {
        if (askWhenReleased) CoRevokeClassObject(0);
        return --references;
    }
    HRESULT LARYNTH_CALL CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppv) override {
        outer = pUnkOuter;
        if (fault) fault();
        return pUnkOuter != nullptr ? CLASS_E_NOAGGREGATION : QueryInterface(riid, ppv);
    }
    HRESULT LARYNTH_CALL LockServer(BOOL) override { return S_OK; }

    DWORD Register(REFCLSID rclsid = CLSID_SampleOne) {
        DWORD number = 0;
        EXPECT_EQ(
            Code(CoRegisterClassObject(rclsid, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &number)),
            "S_OK");
        return number;
    }

    ULONG references = 1;
    DWORD revokeWhenAsked = 0;
    bool askWhenReleased = false;
    IUnknown* outer = nullptr;
    void (*fault)() = nullptr;
};

/// Who offers the sample class now: the interface pointer, without a reference.
IClassFactory* WhoOffers(REFCLSID rclsid) {
    ComPtr<IClassFactory> factory;
    CoGetClassObject(rclsid, CLSCTX_INPROC_SERVER, nullptr, factory.Id(), factory.PutVoid());
    return factory.Get();
}

}  // namespace

TEST(ClassObjects, TheOneRegisteredLastIsFoundFirst) {
    HostFactory first;
    HostFactory second;
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), nullptr);
    const DWORD firstNumber = first.Register();
    const DWORD secondNumber = second.Register();
    EXPECT_NE(firstNumber, secondNumber);
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), &second);
    EXPECT_EQ(WhoOffers(CLSID_SampleTwo), nullptr);
    EXPECT_EQ(second.references, 2U);

    EXPECT_EQ(Code(CoRevokeClassObject(secondNumber)), "S_OK");
    EXPECT_EQ(second.references, 1U);
    EXPECT_EQ(Code(CoRevokeClassObject(secondNumber)), "CO_E_OBJNOTREG");
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), &first);
    EXPECT_EQ(Code(CoRevokeClassObject(firstNumber)), "S_OK");
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), nullptr);
    EXPECT_EQ(first.references, 1U);
}

TEST(ClassObjects, MayCallTheRuntimeWhileTheyAreAskedAndReleased) {
    HostFactory factory;
    factory.askWhenReleased = true;
    factory.revokeWhenAsked = factory.Register();
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), &factory);
    EXPECT_EQ(factory.references, 1U);

    factory.revokeWhenAsked = 0;
    EXPECT_EQ(Code(CoRevokeClassObject(factory.Register())), "S_OK");
    EXPECT_EQ(factory.references, 1U);
}

TEST(ClassObjects, ShadowThoseOfAModule) {
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    HostFactory factory;
    IClassFactory* const fromModule = WhoOffers(CLSID_SampleOne);
    EXPECT_NE(fromModule, nullptr);
    const DWORD number = factory.Register();
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), &factory);
    EXPECT_EQ(Code(CoRevokeClassObject(number)), "S_OK");
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), fromModule);
    CoFreeUnusedLibraries();
}

TEST(ClassObjects, ACreationPassesOnWhatTheFactorySays) {
    HostFactory factory;
    const DWORD number = factory.Register();
    const auto create = [](IUnknown* outer, REFIID riid, void** ppv) {
        return Code(CoCreateInstance(CLSID_SampleOne, outer, CLSCTX_INPROC_SERVER, riid, ppv));
    };
    ComPtr<IUnknown> object;
    EXPECT_EQ(create(nullptr, IID_IUnknown, object.PutVoid()), "S_OK");
    EXPECT_EQ(object.Get(), &factory);
    EXPECT_EQ(create(nullptr, IID_ISample, object.PutVoid()), "E_NOINTERFACE");
    EXPECT_FALSE(object);
    EXPECT_EQ(create(&factory, IID_IUnknown, object.PutVoid()), "CLASS_E_NOAGGREGATION");
    EXPECT_EQ(factory.outer, &factory);

    factory.fault = [] { throw std::bad_alloc(); };
    EXPECT_EQ(create(nullptr, IID_IUnknown, object.PutVoid()), "E_OUTOFMEMORY");
    factory.fault = [] { throw std::runtime_error("a foreign factory's fault"); };
    EXPECT_EQ(create(nullptr, IID_IUnknown, object.PutVoid()), "E_FAIL");
    EXPECT_EQ(factory.references, 2U);  // the test's and the registration's
    EXPECT_EQ(Code(CoRevokeClassObject(number)), "S_OK");
}

TEST(ClassObjects, WrongArgumentsAreRefused) {
    HostFactory factory;
    DWORD number = 0;
    void* out = &factory;
    constexpr DWORD kInProcess = CLSCTX_INPROC_SERVER;
    constexpr DWORD kMultiple = REGCLS_MULTIPLEUSE;
    const CLSID& id = CLSID_SampleOne;
    EXPECT_EQ(Code(CoRegisterClassObject(id, nullptr, kInProcess, kMultiple, &number)), "E_POINTER");
    EXPECT_EQ(Code(CoRegisterClassObject(id, &factory, kInProcess, kMultiple, nullptr)), "E_POINTER");
    EXPECT_EQ(Code(CoRegisterClassObject(id, &factory, 4, kMultiple, &number)), "E_INVALIDARG");
    EXPECT_EQ(Code(CoRegisterClassObject(id, &factory, kInProcess, 0, &number)), "E_INVALIDARG");
    EXPECT_EQ(factory.references, 1U);
    EXPECT_EQ(Code(CoRevokeClassObject(0)), "CO_E_OBJNOTREG");

    EXPECT_EQ(Code(CoGetClassObject(id, kInProcess, nullptr, IID_IUnknown, nullptr)), "E_POINTER");
    EXPECT_EQ(Code(CoGetClassObject(id, kInProcess, &factory, IID_IUnknown, &out)), "E_INVALIDARG");
    EXPECT_EQ(Code(CoCreateInstance(id, nullptr, kInProcess, IID_IUnknown, nullptr)), "E_POINTER");
    EXPECT_EQ(Code(CoCreateInstance(id, nullptr, 4, IID_IUnknown, &out)), "E_INVALIDARG");
    EXPECT_EQ(out, nullptr);
    out = &factory;
    EXPECT_EQ(Code(CoCreateInstance(id, nullptr, kInProcess, IID_IUnknown, &out)), "REGDB_E_CLASSNOTREG");
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(std::string_view(LarynthLastError()),
              "nobody offers the class {8D3E5B0A-1F0C-4B62-9A37-50C1F6D2E411}");
    std::thread([] { EXPECT_STREQ(LarynthLastError(), ""); }).join();
}

TEST(ClassObjects, ManyThreadsRegisterAndFindTheirOwn) {
    std::vector<std::thread> threads;
    for (std::uint32_t thread = 0; thread < 8; ++thread) {
        threads.emplace_back([thread] {
            CLSID own = CLSID_SampleOne;
            own.Data1 += thread;
            HostFactory factory;
            for (int i = 0; i < 500; ++i) {
                const DWORD number = factory.Register(own);
                EXPECT_EQ(WhoOffers(own), &factory);
                EXPECT_EQ(Code(CoRevokeClassObject(number)), "S_OK");
            }
            EXPECT_EQ(factory.references, 1U);
        });
    }
    for (std::thread& thread : threads) thread.join();
}
