// SPDX-License-Identifier: MIT
#include "module/Registration.h"

#include <string>
#include <string_view>

#include <larynth/ComException.h>
#include <larynth/ComPtr.h>
#include <larynth/Registry.h>
#include <larynth/TypeLibrary.h>

#include "com/Boundary.h"
#include "module/ClassTable.h"
#include "module/Registrar.h"
#include "module/RegistryScript.h"
#include "runtime/OwnModule.h"

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

HRESULT Run(const ClassEntry& entry, ScriptMode mode) noexcept {
    return Guarded([&] {
        ComPtr<ILarynthRegistry> registry;
        Zelvani::CheckResult(LarynthOpenRegistry(registry.Put()));
        (Registrar(*registry.Get()).*mode)(ScriptOf(entry));
        return S_OK;
    });
}

}  // namespace

HRESULT RegisterClasses() noexcept {
    for (const ClassEntry& entry : ClassTable()) {
        const HRESULT hr = Run(entry, &Registrar::Register);
        if (FAILED(hr)) return hr;
    }
    return S_OK;
}

HRESULT RegisterOwnTypeLibrary() noexcept {
    return Guarded([] { return LarynthRegisterTypeLibrary(OwnPath().c_str()); });
}

void UnregisterClasses() noexcept {
    for (const ClassEntry& entry : ClassTable()) static_cast<void>(Run(entry, &Registrar::Unregister));
}

}  // namespace larynth
