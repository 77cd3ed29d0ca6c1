// SPDX-License-Identifier: MIT
#include "module/EntryPoints.h"

#include "module/ClassTable.h"
#include "module/Module.h"
#include "module/Registration.h"
#include "runtime/ModuleNotification.h"

HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    return larynth::Module::GetClassObject(rclsid, riid, ppv);
}

HRESULT DllCanUnloadNow() { return larynth::Module::CanUnload() ? S_OK : S_FALSE; }

HRESULT DllRegisterServer() {
    const HRESULT hr = larynth::RegisterClasses();
    return SUCCEEDED(hr) && larynth::HasTypeLibrary() ? larynth::RegisterOwnTypeLibrary() : hr;
}

HRESULT DllUnregisterServer() {
    larynth::UnregisterClasses();
    return S_OK;
}

namespace larynth {

// The notifications stand beside the entry points so that a module, which must resolve them, always takes the
// entry points from the library too.

/// Nothing to build: lock count, locks and class table are constants until first used.
void ModuleLoaded() noexcept {}

void ModuleUnloading() noexcept { Module::ReleaseFactories(); }

}  // namespace larynth
