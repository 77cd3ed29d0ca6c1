// SPDX-License-Identifier: MIT
#include "runtime/classes/ModuleClasses.h"

#include "runtime/Failure.h"

// What each module that is linked in calls its DllGetClassObject; the build gives it this name.
extern "C" HRESULT LARYNTH_CALL LarynthGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);
extern "C" HRESULT LARYNTH_CALL LarynthCompanionGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);

namespace larynth {

HRESULT GetModuleClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    const HRESULT hr = LarynthGetClassObject(rclsid, riid, ppv);
    return hr != CLASS_E_CLASSNOTAVAILABLE ? hr : LarynthCompanionGetClassObject(rclsid, riid, ppv);
}

HRESULT LoadModule(LPCSTR path) {
    throw Failure(CO_E_DLLNOTFOUND,
                  std::string(path) + ": this program has its modules linked in and loads no others");
}

void FreeUnusedModules() {}

}  // namespace larynth
