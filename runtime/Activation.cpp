// SPDX-License-Identifier: MIT
#include <larynth/ComPtr.h>
#include <larynth/Runtime.h>

#include "runtime/ClassObjects.h"
#include "runtime/ClassText.h"
#include "runtime/LastError.h"
#include "runtime/LoadedModules.h"
#include "runtime/RegisteredClasses.h"

namespace larynth {

namespace {

/// Places where a class object is looked for, in this order, until one of them answers something else than
/// CLASS_E_CLASSNOTAVAILABLE.
constexpr HRESULT (*kLookUps[])(REFCLSID, REFIID, void**) = {
    [](REFCLSID rclsid, REFIID riid, void** ppv) { return ClassObjectsOfProcess().Get(rclsid, riid, ppv); },
    [](REFCLSID rclsid, REFIID riid, void** ppv) {
        return ModulesOfProcess().GetClassObject(rclsid, riid, ppv);
    },
    GetRegisteredClassObject,
};

HRESULT GetClassObject(REFCLSID rclsid, DWORD context, REFIID riid, void** ppv) {
    if ((context & CLSCTX_INPROC_SERVER) == 0) {
        return Fail(E_INVALIDARG, "a class serves in its own process only: CLSCTX_INPROC_SERVER");
    }
    for (const auto lookUp : kLookUps) {
        const HRESULT hr = lookUp(rclsid, riid, ppv);
        if (SUCCEEDED(hr)) return hr;
        if (hr == CLASS_E_CLASSNOTAVAILABLE) continue;
        return Fail(hr, "asked for the class object, the supplier of class %s answered 0x%08X",
                    ClassText(rclsid).text, static_cast<unsigned>(hr));
    }
    return Fail(REGDB_E_CLASSNOTREG, "nobody offers the class %s", ClassText(rclsid).text);
}

HRESULT CreateObject(REFCLSID rclsid, IUnknown* outer, DWORD context, REFIID riid, void** ppv) {
    ComPtr<IClassFactory> factory;
    HRESULT hr = GetClassObject(rclsid, context, factory.Id(), factory.PutVoid());
    if (FAILED(hr)) return hr;
    hr = factory->CreateInstance(outer, riid, ppv);
    if (SUCCEEDED(hr)) return hr;
    return Fail(hr, "asked for an object, the factory of class %s answered 0x%08X", ClassText(rclsid).text,
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
