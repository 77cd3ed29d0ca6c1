// SPDX-License-Identifier: MIT
#include <cstdio>
#include <dlfcn.h>
#include <string>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>

#include "runtime/Failure.h"
#include "runtime/classes/LoadedModule.h"
#include "runtime/store/RegistryView.h"

namespace larynth {

namespace {

LoadedModule LoadFile(LPCSTR path) {
    const LoadedModule module = LoadedModule::Load(ModuleFile(path, CO_E_DLLNOTFOUND).c_str());
    if (!module.InMemory()) throw Failure(CO_E_DLLNOTFOUND, dlerror());
    return module;
}

/// Calls an entry point of the module at `path`, after which LarynthLastError() tells what failed meanwhile.
HRESULT Call(LPCSTR path, LPCSTR entryPoint) {
    if (path == nullptr) throw Failure(E_POINTER, "no path");
    const LoadedModule module = LoadFile(path);
    const auto entry = module.RegistrationEntry(entryPoint);
    if (entry == nullptr) {
        throw Failure(CO_E_ERRORINDLL, std::string(path) + ": exports no " + entryPoint);
    }
    Fail(S_OK, "%s", "");
    return entry();
}

/// Says of which module the failure is that LarynthLastError() tells.
HRESULT Explained(HRESULT hr, LPCSTR path, LPCSTR what) {
    const std::string reason = LarynthLastError();
    return Fail(hr, "%s: %s: %s", path, what, reason.empty() ? "it does not say why" : reason.c_str());
}

HRESULT Register(LPCSTR path) {
    const HRESULT hr = Call(path, "DllRegisterServer");
    return FAILED(hr) ? Explained(hr, path, "cannot be registered") : S_OK;
}

HRESULT Unregister(LPCSTR path) {
    const HRESULT hr = Call(path, "DllUnregisterServer");
    if (FAILED(hr)) return Explained(hr, path, "cannot be unregistered");
    // The entry point passes over what fails.
    return *LarynthLastError() != '\0' ? Explained(S_FALSE, path, "something stays registered") : S_OK;
}

HRESULT Describe(LPCSTR path, ILarynthRegistry** registry) {
    auto view = ComPtr<ILarynthRegistry>::Adopt(new RegistryView);
    const RegistrySubstitution substitution(view.Get());
    const HRESULT hr = Register(path);
    if (SUCCEEDED(hr)) *registry = view.Detach();
    return hr;
}

}  // namespace

}  // namespace larynth

HRESULT LARYNTH_CALL LarynthRegisterModule(LPCSTR sPath) {
    return larynth::Contained([&] { return larynth::Register(sPath); });
}

HRESULT LARYNTH_CALL LarynthUnregisterModule(LPCSTR sPath) {
    return larynth::Contained([&] { return larynth::Unregister(sPath); });
}

HRESULT LARYNTH_CALL LarynthDescribeModule(LPCSTR sPath, ILarynthRegistry** ppRegistry) {
    if (ppRegistry == nullptr) return larynth::Fail(E_POINTER, "null out-pointer");
    *ppRegistry = nullptr;
    return larynth::Contained([&] { return larynth::Describe(sPath, ppRegistry); });
}
