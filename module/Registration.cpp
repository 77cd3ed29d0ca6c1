// SPDX-License-Identifier: MIT
// How a module enters its classes into the registration store.
#include <string>

#include <larynth/ComException.h>
#include <larynth/ComPtr.h>
#include <larynth/Registry.h>
#include <larynth/TypeLibrary.h>

#include "com/Boundary.h"
#include "module/ClassTable.h"
#include "module/EntryPoints.h"
#include "module/Registrar.h"
#include "module/RegistryScript.h"
#include "runtime/classes/OwnModule.h"

namespace larynth {

namespace {

using ScriptMode = void (Registrar::*)(const RegistryScript&);

RegistryScript ScriptOf(const ClassEntry& entry) {
    const auto resource = OwnResource("REGISTRY", entry.Script);
    const std::string path = OwnPath();
    if (!resource || path.empty()) {
        throw Zelvani::ComException(E_FAIL, "no registry script, or no path", nullptr, nullptr, 0);
    }
    return ParseRegistryScript({reinterpret_cast<const char*>(resource->data()), resource->size()}, path);
}

/// Writes the class into the user's registration store by its registry script, or takes it out.
HRESULT Run(const ClassEntry& entry, ScriptMode mode) noexcept {
    return Guarded([&] {
        ComPtr<ILarynthRegistry> registry;
        Zelvani::CheckResult(LarynthOpenRegistry(registry.Put()));
        (Registrar(*registry.Get()).*mode)(ScriptOf(entry));
        return S_OK;
    });
}

}  // namespace

}  // namespace larynth

HRESULT LARYNTH_CALL DllRegisterServer() {
    for (const larynth::ClassEntry& entry : larynth::ClassTable()) {
        const HRESULT hr = larynth::Run(entry, &larynth::Registrar::Register);
        if (FAILED(hr)) return hr;  // the classes before it stay
    }
    if (!larynth::HasTypeLibrary()) return S_OK;
    return larynth::Guarded([] { return LarynthRegisterTypeLibrary(larynth::OwnPath().c_str()); });
}

HRESULT LARYNTH_CALL DllUnregisterServer() {
    for (const larynth::ClassEntry& entry : larynth::ClassTable()) {
        static_cast<void>(larynth::Run(entry, &larynth::Registrar::Unregister));
    }
    return S_OK;
}
