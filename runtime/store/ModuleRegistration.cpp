// SPDX-License-Identifier: MIT
#include <cstdio>
#include <dlfcn.h>
#include <string>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>

#include "runtime/Failure.h"
#include "runtime/classes/LoadedModule.h"
#include "runtime/store/RegistryView.h"
#include "runtime/store/StoreFile.h"

namespace larynth {

namespace {

using Creation = RegistrationStore::Creation;

/// Says of which module the failure is that LarynthLastError() tells.
HRESULT Explained(HRESULT hr, LPCSTR path, LPCSTR what) {
    const std::string reason = LarynthLastError();
    return Fail(hr, "%s: %s: %s", path, what, reason.empty() ? "it does not say why" : reason.c_str());
}

/// Carries an entry point out with all that it writes in one transaction of the view's: all of it is kept, or
/// nothing. Without a view it becomes part of the transaction that is going on.
HRESULT Carry(LoadedModule::RegisteringEntry entry, RegistryView* view, Creation creation) {
    if (view == nullptr) return entry();
    RegistrationStore& store = view->Store();
    store.BeginJoint(creation);
    HRESULT hr = E_FAIL;
    {
        const RegistrySubstitution substitution(view);
        hr = Contained(entry);
    }
    store.EndJoint(SUCCEEDED(hr));
    return hr;
}

/// Calls an entry point of the module at `path`. What failed meanwhile LarynthLastError() tells; `what` says
/// what is not possible.
HRESULT Call(LPCSTR path, LPCSTR entryPoint, LPCSTR what, RegistryView* view, Creation creation) {
    const LoadedModule module = LoadedModule::Load(ModuleFile(path, CO_E_DLLNOTFOUND).c_str());
    if (!module.InMemory()) throw Failure(CO_E_DLLNOTFOUND, dlerror());
    const auto entry = module.RegistrationEntry(entryPoint);
    if (entry == nullptr) {
        throw Failure(CO_E_ERRORINDLL, std::string(path) + ": exports no " + entryPoint);
    }
    Fail(S_OK, "%s", "");
    const HRESULT hr = Contained([&] { return Carry(entry, view, creation); });
    return FAILED(hr) ? Explained(hr, path, what) : hr;
}

using View = ComPtr<RegistryView>;

HRESULT Register(LPCSTR path, const View& view) {
    const HRESULT hr =
        Call(path, "DllRegisterServer", "cannot be registered", view.Get(), Creation::kIfMissing);
    return FAILED(hr) ? hr : S_OK;
}

HRESULT Unregister(LPCSTR path, const View& view) {
    const HRESULT hr =
        Call(path, "DllUnregisterServer", "cannot be unregistered", view.Get(), Creation::kNever);
    if (FAILED(hr)) return hr;
    // The entry point passes over what fails.
    return *LarynthLastError() != '\0' ? Explained(S_FALSE, path, "something stays registered") : S_OK;
}

HRESULT WithUsersStore(LPCSTR path, HRESULT (*deed)(LPCSTR, const View&)) {
    return Contained([&] {
        if (path == nullptr) throw Failure(E_POINTER, "no path");
        // A module may have others registered along with it.
        const bool part = RegistrySubstitution::InForce();
        return deed(path, View::Adopt(part ? nullptr : new RegistryView(UsersStoreFile())));
    });
}

HRESULT Describe(LPCSTR path, ILarynthRegistry** registry) {
    if (path == nullptr) throw Failure(E_POINTER, "no path");
    auto view = View::Adopt(new RegistryView);
    const HRESULT hr = Register(path, view);
    if (SUCCEEDED(hr)) *registry = view.Detach();
    return hr;
}

}  // namespace

}  // namespace larynth

HRESULT LARYNTH_CALL LarynthRegisterModule(LPCSTR sPath) {
    return larynth::WithUsersStore(sPath, larynth::Register);
}

HRESULT LARYNTH_CALL LarynthUnregisterModule(LPCSTR sPath) {
    return larynth::WithUsersStore(sPath, larynth::Unregister);
}

HRESULT LARYNTH_CALL LarynthDescribeModule(LPCSTR sPath, ILarynthRegistry** ppRegistry) {
    if (ppRegistry == nullptr) return larynth::Fail(E_POINTER, "null out-pointer");
    *ppRegistry = nullptr;
    return larynth::Contained([&] { return larynth::Describe(sPath, ppRegistry); });
}
