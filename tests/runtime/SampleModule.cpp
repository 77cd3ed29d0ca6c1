// SPDX-License-Identifier: MIT
#include "tests/runtime/SampleModule.h"

#include <atomic>

#include "tests/support/StackObject.h"

#define SAMPLE_EXPORT extern "C" [[gnu::visibility("default")]]

namespace {

constexpr CLSID kOwnClasses[] = {CLSID_SampleOne, CLSID_SampleTwo, CLSID_SampleThree};

constinit std::atomic<LONG> uses{0};
constinit SampleControl control;

class SampleObject final : public larynth::StackObject<ISample> {
  public:
    SampleObject() { ++uses; }
    ~SampleObject() override { --uses; }
    ULONG LARYNTH_CALL Release() noexcept override {
        const ULONG left = StackObject::Release();
        if (left == 0) delete this;
        return left;
    }
    LONG LARYNTH_CALL ModuleNumber() override { return SAMPLE_MODULE; }
};

class SampleFactory final : public larynth::StackObject<IClassFactory> {
  public:
    ULONG LARYNTH_CALL AddRef() noexcept override { return static_cast<ULONG>(++uses); }
    ULONG LARYNTH_CALL Release() noexcept override { return static_cast<ULONG>(--uses); }
    HRESULT LARYNTH_CALL CreateInstance(IUnknown*, REFIID riid, void** ppv) override {
        return (new SampleObject)->QueryInterface(riid, ppv);
    }
    HRESULT LARYNTH_CALL LockServer(BOOL) override { return S_OK; }
};

SampleFactory factory;

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
