// SPDX-License-Identifier: MIT
// Nothing is built when the module is loaded and nothing is left when it is unloaded: lock count and class
// table are constants until first used.
#include "module/EntryPoints.h"

#include <algorithm>
#include <string>
#include <string_view>

#include <larynth/ComException.h>
#include <larynth/ComPtr.h>
#include <larynth/Registry.h>
#include <larynth/TypeLibrary.h>

#include "com/Boundary.h"
#include "com/ModuleLock.h"
#include "com/OutPointer.h"
#include "module/ClassTable.h"
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

HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    const auto table = larynth::ClassTable();
    const auto entry = std::ranges::find(table, rclsid, &larynth::ClassEntry::Id);
    if (entry != table.end()) return entry->Factory.QueryInterface(riid, ppv);
    return FAILED(larynth::Put(ppv, nullptr)) ? E_POINTER : CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT DllCanUnloadNow() { return larynth::ModuleLock::Count() == 0 ? S_OK : S_FALSE; }

HRESULT DllRegisterServer() {
    for (const larynth::ClassEntry& entry : larynth::ClassTable()) {
        const HRESULT hr = larynth::Run(entry, &larynth::Registrar::Register);
        if (FAILED(hr)) return hr;  // the classes before it stay
    }
    if (!larynth::HasTypeLibrary()) return S_OK;
    return larynth::Guarded([] { return LarynthRegisterTypeLibrary(larynth::OwnPath().c_str()); });
}

HRESULT DllUnregisterServer() {
    for (const larynth::ClassEntry& entry : larynth::ClassTable()) {
        static_cast<void>(larynth::Run(entry, &larynth::Registrar::Unregister));
    }
    return S_OK;
}
