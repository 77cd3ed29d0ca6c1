// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

#include <larynth/ComPtr.h>
#include <larynth/Runtime.h>

#include "tests/runtime/SampleModule.h"
#include "tests/support/Code.h"
#include "tests/support/Fake.h"
#include "tests/support/InThreads.h"

namespace {

using larynth::test::Fake, larynth::test::Script;

/// A class object of the test's own, and the object that it gives out.
class HostFactory final : public Fake<IClassFactory> {
  public:
    using Fake::Fake;

    // The runtime may rely on null behind a failure.
    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
        const HRESULT hr = Fake::QueryInterface(riid, ppv);
        if (FAILED(hr)) *ppv = nullptr;
        return hr;
    }
    ULONG LARYNTH_CALL Release() override {
        CoRevokeClassObject(0);  // calls of the runtime are welcome here
        return Fake::Release();
    }
    HRESULT LARYNTH_CALL CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppv) override {
        script.Next("create");
        return pUnkOuter != nullptr ? CLASS_E_NOAGGREGATION : QueryInterface(riid, ppv);
    }
    HRESULT LARYNTH_CALL LockServer(BOOL) override { return S_OK; }

    DWORD Register() {
        DWORD number = 0;
        CoRegisterClassObject(CLSID_SampleOne, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &number);
        return number;
    }
};

/// Who offers the class now: the interface pointer, without a reference.
IClassFactory* WhoOffers(REFCLSID rclsid) {
    ComPtr<IClassFactory> factory;
    CoGetClassObject(rclsid, CLSCTX_INPROC_SERVER, nullptr, factory.Id(), factory.PutVoid());
    return factory.Get();
}

}  // namespace

TEST(ClassObjects, TheOneRegisteredLastIsFoundFirstAndBeforeAModules) {
    ASSERT_EQ(Code(LarynthLoadModule(SAMPLE_MODULE_1)), "S_OK");
    IClassFactory* const fromModule = WhoOffers(CLSID_SampleOne);
    EXPECT_NE(fromModule, nullptr);
    Script script;
    HostFactory first(script), second(script);
    const DWORD firstNumber = first.Register(), secondNumber = second.Register();
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), &second);
    EXPECT_EQ(second.references, 1);
    EXPECT_EQ(Code(CoRevokeClassObject(secondNumber)), "S_OK");
    EXPECT_EQ(second.references, 0);
    EXPECT_EQ(Code(CoRevokeClassObject(secondNumber)), "CO_E_OBJNOTREG");
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), &first);
    script.Do("QueryInterface", [&] { CoRevokeClassObject(firstNumber); });
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), &first) << "held until the look-up has ended";
    EXPECT_EQ(first.references, 0);
    EXPECT_EQ(WhoOffers(CLSID_SampleOne), fromModule);
    CoFreeUnusedLibraries();
}

TEST(ClassObjects, ACreationPassesOnWhatTheFactorySays) {
    Script script;
    HostFactory factory(script);
    const DWORD number = factory.Register();
    ComPtr<IUnknown> object;
    const auto create = [&](IUnknown* outer, REFIID riid, void (*fault)() = nullptr) {
        if (fault != nullptr) script.Do("create", fault);
        return Code(CoCreateInstance(CLSID_SampleOne, outer, CLSCTX_INPROC_SERVER, riid, object.PutVoid()));
    };
    EXPECT_EQ(create(nullptr, IID_IUnknown), "S_OK");
    EXPECT_EQ(object.Get(), &factory);
    EXPECT_EQ(create(nullptr, IID_ISample), "E_NOINTERFACE");
    EXPECT_FALSE(object);
    EXPECT_EQ(create(&factory, IID_IUnknown), "CLASS_E_NOAGGREGATION");
    EXPECT_EQ(create(nullptr, IID_IUnknown, [] { throw std::bad_alloc(); }), "E_OUTOFMEMORY");
    EXPECT_EQ(create(nullptr, IID_IUnknown, [] { throw std::runtime_error("a fault"); }), "E_FAIL");
    EXPECT_EQ(factory.references, 1);
    EXPECT_EQ(Code(CoRevokeClassObject(number)), "S_OK");
}

TEST(ClassObjects, WrongArgumentsAreRefused) {
    void* out = nullptr;
    const CLSID& id = CLSID_SampleOne;
    EXPECT_EQ(Code(CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_IUnknown, nullptr)), "E_POINTER");
    EXPECT_EQ(Code(CoCreateInstance(id, nullptr, 4, IID_IUnknown, &out)), "E_INVALIDARG");
    EXPECT_EQ(WhoOffers(id), nullptr);
    EXPECT_STREQ(LarynthLastError(), "nobody offers the class {8D3E5B0A-1F0C-4B62-9A37-50C1F6D2E411}");
    InThreads(1, [](int) { EXPECT_STREQ(LarynthLastError(), ""); });
}
