// SPDX-License-Identifier: MIT
#include "tests/runtime/SampleModule.h"

#include <atomic>

#define SAMPLE_EXPORT extern "C" [[gnu::visibility("default")]]

namespace {

constexpr CLSID kOwnClasses[] = {CLSID_SampleOne, CLSID_SampleTwo, CLSID_SampleThree};

constinit std::atomic<LONG> uses{0};
constinit SampleControl control;

/// The class object, and every object that it makes.
class Sample final : public ISample, public IClassFactory {
  public:
    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
        *ppv = nullptr;
        if (riid == IID_ISample) *ppv = static_cast<ISample*>(this);
        if (riid == IID_IUnknown || riid == IID_IClassFactory) *ppv = static_cast<IClassFactory*>(this);
        if (*ppv == nullptr) return E_NOINTERFACE;
        return ++uses, S_OK;
    }
    ULONG LARYNTH_CALL AddRef() override { return static_cast<ULONG>(++uses); }
    ULONG LARYNTH_CALL Release() override { return static_cast<ULONG>(--uses); }
    HRESULT LARYNTH_CALL CreateInstance(IUnknown*, REFIID riid, void** ppv) override {
        return QueryInterface(riid, ppv);
    }
    HRESULT LARYNTH_CALL LockServer(BOOL) override { return S_OK; }
    LONG LARYNTH_CALL ModuleNumber() override { return SAMPLE_MODULE; }
};

constinit Sample sample;

}  // namespace

SAMPLE_EXPORT SampleControl* ControlSample() { return &control; }

SAMPLE_EXPORT HRESULT LARYNTH_CALL DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    *ppv = nullptr;
    if (control.beforeClassObject != nullptr) control.beforeClassObject();
    const bool own = rclsid == kOwnClasses[SAMPLE_MODULE - 1] || rclsid == CLSID_SampleCommon;
    return own ? sample.QueryInterface(riid, ppv) : CLASS_E_CLASSNOTAVAILABLE;
}

#ifndef SAMPLE_NEVER_UNLOADS
SAMPLE_EXPORT HRESULT LARYNTH_CALL DllCanUnloadNow() {
    const HRESULT answer = uses == 0 ? S_OK : S_FALSE;
    if (control.afterUnloadAnswer != nullptr) control.afterUnloadAnswer();
    return answer;
}
#endif
