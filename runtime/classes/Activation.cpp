// SPDX-License-Identifier: MIT
// Where classes are looked for, and the functions that hosts do it by.
#include <larynth/ComPtr.h>
#include <larynth/Runtime.h>

#include "runtime/Failure.h"
#include "runtime/classes/ClassObjects.h"
#include "runtime/classes/ModuleClasses.h"

namespace larynth {

namespace {

/// Those of the process. A constant until one is offered, wherever the standard library has an empty vector
/// of constants; elsewhere the first look-up makes it.
NeverDestroyed<ClassObjects>& OwnClassObjects() noexcept {
    static NeverDestroyed<ClassObjects> classObjects;
    return classObjects;
}

HRESULT GetClassObject(REFCLSID rclsid, DWORD context, REFIID riid, void** ppv) {
    if ((context & CLSCTX_INPROC_SERVER) == 0) {
        return Fail(E_INVALIDARG, "a class serves in its own process only: CLSCTX_INPROC_SERVER");
    }
    HRESULT hr = OwnClassObjects()->Get(rclsid, riid, ppv);
    if (hr == CLASS_E_CLASSNOTAVAILABLE) hr = GetModuleClassObject(rclsid, riid, ppv);
    if (SUCCEEDED(hr)) return hr;
    if (hr == CLASS_E_CLASSNOTAVAILABLE) {
        return Fail(REGDB_E_CLASSNOTREG, "nobody offers the class %s", ClassText(rclsid).c_str());
    }
    return Fail(hr, "asked for the class object, the supplier of class %s answered 0x%08X",
                ClassText(rclsid).c_str(), static_cast<unsigned>(hr));
}

HRESULT CreateObject(REFCLSID rclsid, IUnknown* outer, DWORD context, REFIID riid, void** ppv) {
    ComPtr<IClassFactory> factory;
    HRESULT hr = GetClassObject(rclsid, context, factory.Id(), factory.PutVoid());
    if (FAILED(hr)) return hr;
    hr = factory->CreateInstance(outer, riid, ppv);
    if (SUCCEEDED(hr)) return hr;
    return Fail(hr, "asked for an object, the factory of class %s answered 0x%08X", ClassText(rclsid).c_str(),
                static_cast<unsigned>(hr));
}

}  // namespace

}  // namespace larynth

HRESULT LARYNTH_CALL CoGetClassObject(REFCLSID rclsid, DWORD dwClsContext, void* pvReserved, REFIID riid,
                                      void** ppv) {
    if (ppv == nullptr) return larynth::Fail(E_POINTER, "null out-pointer");
    *ppv = nullptr;
    if (pvReserved != nullptr) return larynth::Fail(E_INVALIDARG, "the reserved argument is not null");
    return larynth::Contained([&] { return larynth::GetClassObject(rclsid, dwClsContext, riid, ppv); });
}

HRESULT LARYNTH_CALL CoCreateInstance(REFCLSID rclsid, IUnknown* pUnkOuter, DWORD dwClsContext, REFIID riid,
                                      void** ppv) {
    if (ppv == nullptr) return larynth::Fail(E_POINTER, "null out-pointer");
    *ppv = nullptr;
    return larynth::Contained(
        [&] { return larynth::CreateObject(rclsid, pUnkOuter, dwClsContext, riid, ppv); });
}

HRESULT LARYNTH_CALL CoRegisterClassObject(REFCLSID rclsid, IUnknown* pUnk, DWORD dwClsContext, DWORD flags,
                                           DWORD* lpdwRegister) {
    if (pUnk == nullptr || lpdwRegister == nullptr) return larynth::Fail(E_POINTER, "null pointer");
    if (dwClsContext != CLSCTX_INPROC_SERVER || flags != REGCLS_MULTIPLEUSE) {
        return larynth::Fail(E_INVALIDARG, "only CLSCTX_INPROC_SERVER with REGCLS_MULTIPLEUSE is possible");
    }
    return larynth::Contained([&] {
        *lpdwRegister = larynth::OwnClassObjects()->Add(rclsid, pUnk);
        return S_OK;
    });
}

HRESULT LARYNTH_CALL CoRevokeClassObject(DWORD dwRegister) {
    return larynth::Contained([&] {
        if (larynth::OwnClassObjects()->Remove(dwRegister)) return S_OK;
        return larynth::Fail(CO_E_OBJNOTREG, "no class object is registered under the number %u", dwRegister);
    });
}

HRESULT LARYNTH_CALL LarynthLoadModule(LPCSTR sPath) {
    if (sPath == nullptr) return larynth::Fail(E_POINTER, "no path");
    return larynth::Contained([&] { return larynth::LoadModule(sPath); });
}

void LARYNTH_CALL CoFreeUnusedLibraries() {
    larynth::Contained([] {
        larynth::FreeUnusedModules();
        return S_OK;
    });
}
