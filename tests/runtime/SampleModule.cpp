// SPDX-License-Identifier: MIT
#include "tests/runtime/SampleModule.h"

#define SAMPLE_EXPORT extern "C" [[gnu::visibility("default")]]

namespace {

constexpr CLSID kOwnClasses[] = {CLSID_SampleOne, CLSID_SampleTwo, CLSID_SampleThree};

constinit std::atomic<LONG> uses{0};
constinit SampleControl control;

class SampleObject final : public ISample {
  public:
    SampleObject() { ++uses; }
    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
        *ppv = nullptr;
        if (!(riid == IID_IUnknown) && !(riid == IID_ISample)) return E_NOINTERFACE;
        *ppv = static_cast<ISample*>(this);
        AddRef();
        return S_OK;
    }
    ULONG LARYNTH_CALL AddRef() override { return ++count_; }
    ULONG LARYNTH_CALL Release() override {
        const ULONG left = --count_;
        if (left == 0) delete this;
        return left;
    }
    LONG LARYNTH_CALL ModuleNumber() override { return SAMPLE_MODULE; }

  private:
    ~SampleObject() { --uses; }
    ULONG count_ = 1;
};

class SampleFactory final : public IClassFactory {
  public:
    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
        *ppv = nullptr;
        if (!(riid == IID_IUnknown) && !(riid == IID_IClassFactory)) return E_NOINTERFACE;
        *ppv = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }
    ULONG LARYNTH_CALL AddRef() override { return static_cast<ULONG>(++uses); }
    ULONG LARYNTH_CALL Release() override { return static_cast<ULONG>(--uses); }
    HRESULT LARYNTH_CALL CreateInstance(IUnknown*, REFIID riid, void** ppv) override {
        auto* object = new SampleObject;
        const HRESULT hr = object->QueryInterface(riid, ppv);
        object->Release();
        return hr;
    }
    HRESULT LARYNTH_CALL LockServer(BOOL) override { return S_OK; }
};

constinit SampleFactory factory;

[[gnu::destructor]] void Unloading() {
    if (control.unloads != nullptr) ++*control.unloads;
}

}  // namespace


SAMPLE_EXPORT SampleControl* ControlSample() { return &control; }

SAMPLE_EXPORT HRESULT LARYNTH_CALL DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    *ppv = nullptr;
    if (control.beforeClassObject != nullptr) control.beforeClassObject();
    const bool own = rclsid == kOwnClasses[SAMPLE_MODULE - 1] || rclsid == CLSID_SampleCommon;
    return own ? factory.QueryInterface(riid, ppv) : CLASS_E_CLASSNOTAVAILABLE;
}

#ifndef SAMPLE_NEVER_UNLOADS
SAMPLE_EXPORT HRESULT LARYNTH_CALL DllCanUnloadNow() {
    const HRESULT answer = uses == 0 ? S_OK : S_FALSE;
    if (control.afterUnloadAnswer != nullptr) control.afterUnloadAnswer();
    return answer;
}
#endif
