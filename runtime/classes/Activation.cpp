// SPDX-License-Identifier: MIT
// Where classes are looked for, and the functions that hosts do it by.
#include <optional>
#include <string>

#include <larynth/ComPtr.h>
#include <larynth/Runtime.h>

#include "runtime/Failure.h"
#include "runtime/classes/ClassObjects.h"
#include "runtime/classes/LoadedModules.h"
#include "runtime/store/RegistrationStore.h"
#include "runtime/store/StoreFile.h"

namespace larynth {

namespace {

/// What offers classes in this process, for its whole life: ready before any code runs and never destroyed,
/// so that it can be used while any library is loaded or unloaded.
union Process {
    constexpr Process() : offers() {}
    ~Process() {}  // NOLINT(modernize-use-equals-default): it would end what the union holds

    struct {
        ClassObjects classObjects;
        LoadedModules modules;
    } offers;
};
constinit Process process;
constexpr auto& offers = process.offers;  // NOLINT(cppcoreguidelines-pro-type-union-access): its only member

/// The module of a class in the user's registration store or else in the system's.
std::optional<std::string> RegisteredModule(const std::string& classText) {
    const std::string key = "HKEY_CLASSES_ROOT\\CLSID\\" + classText + "\\InprocServer32";
    for (const std::string& file : {UsersStoreFile(), SystemStoreFile()}) {
        if (auto path = RegistrationStore(file).Value(key, "")) return path;
    }
    return std::nullopt;
}

/// The class object of a class that a registration store knows, from the module that the store
/// names: it is loaded, and from then on among the modules of the process. CLASS_E_CLASSNOTAVAILABLE when no
/// store knows the class. Raises Failure when a store cannot be read, with CO_E_DLLNOTFOUND when
/// the module cannot be loaded and CO_E_ERRORINDLL when it is no component module.
///
/// The stores are opened anew each time: this is the last place where a class is looked for.
HRESULT GetRegisteredClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    const std::string classText = ClassText(rclsid);
    const std::optional<std::string> path = RegisteredModule(classText);
    if (!path) return CLASS_E_CLASSNOTAVAILABLE;
    if (!path->starts_with('/')) {
        throw Failure(CO_E_DLLNOTFOUND, "the registered module of class " + classText + ": " + *path +
                                            ": expected an absolute path");
    }
    // Held here too, so that nobody frees the module before it was asked.
    const LoadedModule module = LoadedModule::Load(path->c_str());
    if (const HRESULT hr = offers.modules.Load(path->c_str()); FAILED(hr)) {
        throw Failure(hr, "the registered module of class " + classText + ": " + LarynthLastError());
    }
    return offers.modules.GetClassObject(rclsid, riid, ppv);
}

HRESULT GetClassObject(REFCLSID rclsid, DWORD context, REFIID riid, void** ppv) {
    if ((context & CLSCTX_INPROC_SERVER) == 0) {
        return Fail(E_INVALIDARG, "a class serves in its own process only: CLSCTX_INPROC_SERVER");
    }
    HRESULT hr = offers.classObjects.Get(rclsid, riid, ppv);
    if (hr == CLASS_E_CLASSNOTAVAILABLE) hr = offers.modules.GetClassObject(rclsid, riid, ppv);
    if (hr == CLASS_E_CLASSNOTAVAILABLE) hr = GetRegisteredClassObject(rclsid, riid, ppv);
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
        *lpdwRegister = larynth::offers.classObjects.Add(rclsid, pUnk);
        return S_OK;
    });
}

HRESULT LARYNTH_CALL CoRevokeClassObject(DWORD dwRegister) {
    return larynth::Contained([&] {
        if (larynth::offers.classObjects.Remove(dwRegister)) return S_OK;
        return larynth::Fail(CO_E_OBJNOTREG, "no class object is registered under the number %u", dwRegister);
    });
}

HRESULT LARYNTH_CALL LarynthLoadModule(LPCSTR sPath) {
    if (sPath == nullptr) return larynth::Fail(E_POINTER, "no path");
    return larynth::Contained(
        [&] { return larynth::offers.modules.Load(larynth::ModuleFile(sPath, CO_E_DLLNOTFOUND).c_str()); });
}

void LARYNTH_CALL CoFreeUnusedLibraries() {
    larynth::Contained([] {
        larynth::offers.modules.FreeUnused();
        return S_OK;
    });
}
